// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <QString>

#include <optional>

namespace core
{

// What an open handle tells about a file or folder, links followed.
struct FileFacts {
    std::optional<FileIdentity> identity; // empty where the file system has none
    // False for a file server that numbers its files in the old, short way: two of its numbers need not be
    // two files.
    bool identityIsCertain = true;
    quint32 linkCount = 1;  // hard links
    quint32 attributes = 0; // FileAttribute
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
};

// Asks the disk about single files. Implementations: the Win32 one, platform::fileProbe(), and those of the
// tests. Every function may be called from several threads at once and may take as long as the disk likes.
class FileProbe
{
public:
    virtual ~FileProbe() = default;

    // The attributes as the folder lists them (FileAttribute), without opening the file; empty when the
    // folder has no such entry. Only a listing shows AttributeRecallOnOpen: asking the file itself would
    // already fetch it.
    virtual std::optional<quint32> listedAttributes(const QString &path) = 0;

    // Opens the object, without access to its content. Empty when it cannot be opened.
    virtual std::optional<FileFacts> facts(const QString &path) = 0;

    // Whether the item lies below the root without a link on the way and without being one. False when in
    // doubt.
    virtual bool isInside(const QString &root, const QString &item) = 0;
};

} // namespace core
