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

// A file whose content lies in a cloud store or another slow store: opening it would fetch the content.
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

// The entries of one folder, "." and ".." left out, in the order in which the file system returned them. All
// names share one buffer, so that a folder of a million files costs two growing arrays and no text objects.
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
    // Valid until the listing changes or dies.
    DirectoryEntry at(std::size_t index) const;

    // False when the folder could not be listed at all (no rights, vanished); the listing is then empty.
    bool readable = false;
    // True when the listing broke off: the folder may hold more than these entries. Never because of the
    // cancel flag.
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

// Which file or folder a path ends at, links followed. Two paths with equal identities are the same object.
struct FileIdentity {
    quint64 volume = 0;
    quint64 file = 0;
    quint64 fileHigh = 0; // not 0 on ReFS only, where 64 bits do not tell two files apart
    bool operator==(const FileIdentity &) const = default;
};

// Lists folders. Implementations: platform::Win32Enumerator, and the in-memory one of the tests. Every
// function may be called from several threads at once and never throws for what the file system answers.
class DirectoryEnumerator
{
public:
    virtual ~DirectoryEnumerator() = default;

    // Fills `out` (cleared first). `folder` has native separators and no separator at its end, but for the
    // drive-root form "C:". Ends early, with what was read, when the flag is set.
    virtual void list(const QString &folder, DirectoryListing &out, const CancelFlag &cancel) = 0;

    // Opens the object; used at links only. Empty when it cannot be opened.
    virtual std::optional<FileIdentity> identity(const QString &path) = 0;

    // From any thread, of a walk whose cancel flag is set: ends the calls in which the other threads wait for
    // a disk, where the system can. One that is about to begin is missed, so it is called until the walk
    // ends.
    virtual void interrupt() {}
};

} // namespace core
