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

    enum class Placed { Done, NameTaken, Failed };
    // Closes the file and renames it. With `replace`, a regular file of that name is replaced, unless it is
    // read-only, open elsewhere without sharing, or reached through a link; a folder never is. With Failed,
    // `problem` is a text for the user.
    Placed place(bool replace, QString &problem);

    // Does disk I/O. Erases our temporary files that are not in use. Returns how many.
    static int clearLeftovers(const QString &folder);

private:
    QString m_path;
    QFile m_file;
    bool m_placed = false;
};

} // namespace platform
