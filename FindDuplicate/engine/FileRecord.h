// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace duplicates
{

// A file of a scan as described by its folder's listing: nothing is read from the file itself. Times are
// FILETIME values (100 ns since 1601-01-01 UTC).
struct FileRecord {
    QString name;
    // The folder as it was walked, without a trailing separator: a drive root is "D:". Shared by all its
    // files.
    QString walkedFolder;
    quint64 size = 0;
    quint64 lastAccessTime = 0;
    quint64 creationTime = 0;
    quint64 lastWriteTime = 0;
    // core::isPlaceholder() of its attributes.
    bool placeholder = false;
    // Set by the results page once the user has requested the file's removal.
    bool checked = false;
    // Set in addition to `checked` if the file was really moved, which fails for instance if another program
    // holds it open.
    bool moved = false;
    // Set with `checked` when the file is gone, but Windows did not tell whether it is in the recycle bin.
    bool untraced = false;

    // The folder in display form: a drive root is "D:\".
    QString folder() const;
    QString fullPath() const;
    // The part of the name after its last dot.
    QString suffix() const;

    bool operator==(const FileRecord &) const = default;
};

// Files of equal size and last-write time: the first one found, then the others in walk order.
struct DuplicateGroup {
    std::vector<FileRecord> members;
    quint64 size = 0; // of each member, in bytes

    bool operator==(const DuplicateGroup &) const = default;
};

// The part after the last dot; empty without a dot or if the name ends in one.
QStringView suffixOf(QStringView fileName);

} // namespace duplicates
