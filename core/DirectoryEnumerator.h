// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QString>
#include <QStringView>

#include <cstddef>
#include <optional>
#include <vector>

namespace core
{

// File attributes as Windows defines them (winnt.h, FILE_ATTRIBUTE_*).
enum FileAttribute : quint32 {
    AttributeReadOnly = 0x1,
    AttributeHidden = 0x2,
    AttributeSystem = 0x4,
    AttributeDirectory = 0x10,
    AttributeReparsePoint = 0x400,
    AttributeOffline = 0x1000,
    AttributeRecallOnOpen = 0x40000,
    AttributeRecallOnDataAccess = 0x400000,
};

// A file whose content is in the cloud or another slow store: opening it would download the content.
constexpr bool isPlaceholder(quint32 attributes)
{
    return (attributes & (AttributeOffline | AttributeRecallOnOpen | AttributeRecallOnDataAccess)) != 0;
}

// One entry of a folder. `name` points into the listing that it came from. Times are FILETIME values: 100 ns
// since 1601-01-01 UTC. `size` is the logical size in bytes. `reparseTag` is meaningful only with
// AttributeReparsePoint.
struct DirectoryEntry {
    QStringView name;
    quint32 attributes = 0;
    quint32 reparseTag = 0;
    quint64 size = 0;
    quint64 creationTime = 0;
    quint64 lastAccessTime = 0;
    quint64 lastWriteTime = 0;

    bool isDirectory() const { return (attributes & AttributeDirectory) != 0; }

    // A directory that may lead somewhere else: a name-surrogate tag (junction, symbolic link), or a reparse
    // point without a tag, which is how Wine shows a symbolic link. Cloud and deduplication tags are not
    // links.
    bool mayBeLink() const
    {
        constexpr quint32 nameSurrogate = 0x20000000; // winnt.h, IsReparseTagNameSurrogate
        return isDirectory() && (attributes & AttributeReparsePoint) != 0 &&
               (reparseTag == 0 || (reparseTag & nameSurrogate) != 0);
    }
};

// The entries of one folder without "." and "..", in the order returned by the file system. All names share
// one buffer, so a folder of a million files needs two growing arrays and no string objects.
class DirectoryListing
{
public:
    // Copies everything, the name included.
    void add(const DirectoryEntry &entry);
    void clear();
    // Copies another listing into buffers whose sizes are powers of two. Thousands of listings that are held
    // for a while and then freed must not leave holes of every size: a heap that looks for the first hole
    // large enough, as Wine's does, then takes longer to find one than the file system takes to list a
    // folder.
    void assign(const DirectoryListing &other);

    std::size_t size() const { return m_records.size(); }
    // Valid until the listing changes or is destroyed.
    DirectoryEntry at(std::size_t index) const;

    // False if the folder could not be listed at all (no rights, vanished); the listing is then empty.
    bool readable = false;
    // True if the listing was interrupted by an error: the folder may contain more entries. Never set because
    // of the cancel flag.
    bool brokenOff = false;

private:
    struct Record {
        std::size_t nameOffset;
        quint32 nameLength;
        quint32 attributes;
        quint32 reparseTag;
        quint64 size;
        quint64 creationTime;
        quint64 lastAccessTime;
        quint64 lastWriteTime;
    };
    std::vector<char16_t> m_names;
    std::vector<Record> m_records;
};

// Identifies the file or folder that a path refers to, links followed. Paths with equal identities refer to
// the same object.
struct FileIdentity {
    quint64 volume = 0;
    quint64 file = 0;
    quint64 fileHigh = 0; // only nonzero on ReFS, whose file ids need more than 64 bits
    bool operator==(const FileIdentity &) const = default;
};

// Lists folders. Implemented by platform::Win32Enumerator and by the in-memory one of the tests. All
// functions may be called from several threads at once, and never throw because of the file system.
class DirectoryEnumerator
{
public:
    virtual ~DirectoryEnumerator() = default;

    // Fills `out` (cleared first). `folder` has native separators and no trailing separator, except for the
    // drive root form "C:". When the flag is set, returns early with what was read.
    virtual void list(const QString &folder, DirectoryListing &out, const CancelFlag &cancel) = 0;

    // Opens the object; used for links only. nullopt if it cannot be opened.
    virtual std::optional<FileIdentity> identity(const QString &path) = 0;

    // Any thread, once the walk's cancel flag is set: cancels blocking disk calls of the other threads where
    // the system supports it. A call that is just starting is missed, so this is repeated until the walk
    // ends.
    virtual void interrupt() {}
};

} // namespace core
