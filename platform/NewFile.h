// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>

#include <memory>

namespace platform
{

// A file that is written under a temporary name in its target folder and then renamed in one step: at any
// time the final name refers to the old file, the new one, or none. If it is not placed, the destructor
// removes it; files left by a crash are removed by clearLeftovers(). One thread at a time.
class NewFile
{
public:
    // Does disk I/O. Creates the temporary file for `path`. The folder must exist.
    explicit NewFile(const QString &path);
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    // Open for reading and writing, or closed if it could not be created; then errorString() says why.
    QFile &file() { return m_file; }

    // Appends to the file. Once it has failed, nothing more is written and place() fails with that reason,
    // so that a series of writes needs no check of its own.
    bool write(const QByteArray &bytes);

    enum class Placed { Done, NameTaken, Failed };
    // Closes the file and renames it. With `replace`, a regular file of that name is replaced, unless it is
    // read-only, open elsewhere without sharing, or reached through a link; a folder never is. With Failed,
    // `problem` is a text for the user.
    Placed place(bool replace, QString &problem);

    // Does disk I/O. Writes a whole file and places it, replacing an older one. Returns an empty text, or why
    // not as a text for the user.
    static QString save(const QString &path, const QByteArray &bytes);

    // Does disk I/O. Erases our temporary files that are not in use. Returns how many.
    static int clearLeftovers(const QString &folder);

private:
    QString m_path;
    QFile m_file;
    QString m_writeError;
    bool m_placed = false;
};

} // namespace platform
