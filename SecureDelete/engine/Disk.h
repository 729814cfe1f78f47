// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Extents.h"
#include "core/DirectoryEnumerator.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace securedelete
{

// Why something was left or failed.
enum class Fault {
    None,
    Vanished,
    Changed, // no longer what the list showed
    ReadOnly,
    InUse,
    Denied,
    ThroughLink, // a link on the path leads somewhere else
    InCloud,
    Protected,  // a drive root, the Windows and program folders, a profile, their parents, and what lies in
                // system folders
    OtherNames, // hard links: other names share its content
    WriteFailed,
    DiskFull, // overwriting needs more free space than there is
    NotEmpty,
    NameTaken,
    Cancelled,
    Failed
};

// A file or folder as it was listed.
struct Item {
    QString root;   // modifying calls stay below this folder
    QString folder; // folder of the item: the root or below it, without a trailing separator
    QString name;
    quint32 attributes = 0;
    quint32 reparseTag = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    std::optional<core::FileIdentity> identity = std::nullopt;

    QString path() const { return folder + u'\\' + name; }
    bool isFolder() const { return (attributes & core::AttributeDirectory) != 0; }
    // True for a junction, mount point or symbolic link, false for a cloud placeholder. Wine reports links to
    // folders with tag 0.
    bool isLink() const;
};

Item itemOf(const QString &root, const QString &folder, const core::DirectoryEntry &entry);

// Bytes that can be overwritten: a file, one of its streams, or a volume.
class Target
{
public:
    virtual ~Target() = default;
    virtual bool moveTo(quint64 position) = 0;
    virtual bool moveBack(quint64 bytes) = 0; // relative to the current position
    // Returns the number of bytes written; a short write is not an error, 0 is.
    virtual quint64 write(const char *data, quint64 bytes) = 0;
};

struct Stream {
    QString name; // ":name:$DATA"
    quint64 size = 0;
};

struct Range {
    quint64 offset = 0;
    quint64 length = 0;
};

// A file while it is being destroyed, from its first byte to its name. Every step acts on the listed file or
// fails: the first step compares the listed facts, later ones the file's identity.
class DoomedFile
{
public:
    virtual ~DoomedFile() = default;

    // Opens write-through, sharing everything. The target is valid until the next step; null with the reason
    // in `fault`.
    virtual Target *openForWriting(Fault &fault) = 0;
    virtual Target *openStream(const QString &stream, Fault &fault) = 0;
    // Of the open file.
    virtual quint32 linkCount() = 0;
    virtual std::vector<Stream> streams() = 0; // without the unnamed main stream
    // The allocated ranges of a sparse file; nullopt if they cannot be queried.
    virtual std::optional<std::vector<Range>> allocatedRanges() = 0;
    virtual quint64 freeBytes() = 0; // on its volume, for this user
    // Closes whatever is open.
    virtual void close() = 0;

    // Opens the raw volume that holds this file, for writing to its clusters; null if that is not possible.
    // The object is shared by all files of the volume.
    virtual Target *openVolume(VolumeFacts &facts) = 0;
    virtual std::optional<std::vector<Extent>> extents() = 0;

    // Stays in the same folder and never replaces another file.
    virtual Fault rename(const QString &name) = 0;
    virtual Fault erase() = 0;
    virtual QString name() = 0;
    // True if a file with the original name exists (again).
    virtual bool formerNameExists() = 0;
};

// The disk operations that the engine needs. Implemented by Win32Disk (behind the guard of platform/) and by
// the recording fake of the tests. Used on one thread.
class Disk
{
public:
    virtual ~Disk() = default;

    // The entry as its folder lists it; nullopt if there is none of that name.
    virtual std::optional<Item> find(const QString &root, const QString &folder, const QString &name) = 0;
    virtual void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) = 0;
    virtual std::unique_ptr<DoomedFile> file(const Item &item) = 0;
    // Fault::None if this is still the listed folder and not another one of the same name.
    virtual Fault checkFolder(const Item &item) = 0;
    // Deletes the link itself, never its target.
    virtual Fault eraseLink(const Item &item) = 0;
    virtual Fault eraseFolder(const Item &item) = 0; // must be empty
    virtual bool isProtected(const Item &item) = 0;
    // Waits briefly before a retry, so that other processes can close the file.
    virtual void pause() = 0;
};

} // namespace securedelete
