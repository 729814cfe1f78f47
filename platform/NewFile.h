// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>

#include <memory>

namespace platform
{

// A file that is written under a temporary name in the folder where it belongs, and put in place in one step:
// whatever happens, its final name shows the old file, the new one, or none. What is not placed is removed
// with the object; what a crashed run left behind, by clearLeftovers(). One thread at a time.
class NewFile
{
public:
    // Disk. Begins a file that is to be called `path`. The folder must exist.
    explicit NewFile(const QString &path);
    ~NewFile();
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    // Open for reading and writing, or closed when it could not be created; errorString() says why.
    QFile &file() { return m_file; }

    enum class Placed { Done, NameTaken, Failed };
    // Closes the file and gives it its name. With `replace`, a plain file of that name is replaced, unless it
    // is read-only, open elsewhere without sharing, or reached through a link; a folder never is. `problem`
    // is set with Failed, in words for the user.
    Placed place(bool replace, QString &problem);

    // Disk. Erases the temporary files of this kind that nobody holds open. Returns how many.
    static int clearLeftovers(const QString &folder);

private:
    QString m_path;
    QFile m_file;
    bool m_placed = false;
};

} // namespace platform
