// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace duplicates
{

// A file that a scan compares, as its folder's listing described it: nothing of it is read from the file
// itself. Times are FILETIME values (100 ns since 1601-01-01 UTC).
struct FileRecord {
    QString name;
    // The folder as it was walked, without a separator at its end: a drive root is "D:". Shared by all its
    // files.
    QString walkedFolder;
    quint64 size = 0;
    quint64 lastAccessTime = 0;
    quint64 creationTime = 0;
    quint64 lastWriteTime = 0;
    // core::isPlaceholder() of its attributes.
    bool placeholder = false;
    // Set by the results view once the user has asked for the file's removal.
    bool checked = false;
    // Set with `checked` when the file did go: it may be held open by another program.
    bool moved = false;

    // The folder as it is shown: a drive root is "D:\".
    QString folder() const;
    QString fullPath() const;
    // What follows the last dot of the name, without the dot.
    QString suffix() const;

    bool operator==(const FileRecord &) const = default;
};

// Files with one size and one last-write time: the earliest met first, then the others in walk order.
struct DuplicateGroup {
    std::vector<FileRecord> members;
    quint64 size = 0; // of each member, in bytes

    bool operator==(const DuplicateGroup &) const = default;
};

// What follows the last dot; empty without a dot, and for a name that ends in one.
QStringView suffixOf(QStringView fileName);

} // namespace duplicates
