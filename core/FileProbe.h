// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <QString>

#include <optional>

namespace core
{

// Facts about a file or folder from an open handle, links followed.
struct FileFacts {
    std::optional<FileIdentity> identity; // nullopt if the file system has none
    // False for a file server with short file ids only: different ids may then denote the same file.
    bool identityIsCertain = true;
    quint32 linkCount = 1;  // hard links
    quint32 attributes = 0; // FileAttribute
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
};

// Queries single files on disk. Implemented by platform::fileProbe() and by the tests. All functions may be
// called from several threads at once and may block for any time.
class FileProbe
{
public:
    virtual ~FileProbe() = default;

    // The attributes in the folder's listing (FileAttribute), without opening the file; nullopt if there is
    // no such entry. Only a listing shows AttributeRecallOnOpen: querying the file itself would already
    // download it.
    virtual std::optional<quint32> listedAttributes(const QString &path) = 0;

    // Opens the object without access to its content. nullopt if it cannot be opened.
    virtual std::optional<FileFacts> facts(const QString &path) = 0;

    // Whether the item is below the root, with no link on the path and not a link itself. False if in doubt.
    virtual bool isInside(const QString &root, const QString &item) = 0;
};

} // namespace core
