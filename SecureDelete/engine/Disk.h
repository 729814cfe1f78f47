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

// Why something was left, or could not be done.
enum class Fault {
    None,
    Vanished,
    Changed, // is not what the list showed any more
    ReadOnly,
    InUse,
    Denied,
    ThroughLink, // lies somewhere else than its path says
    InCloud,
    Protected,  // a drive root, Windows, the program folders, a profile, or what is above or in the system's
    OtherNames, // hard links: its content belongs to other names as well
    WriteFailed,
    DiskFull, // overwriting it needs more room than there is
    NotEmpty,
    NameTaken,
    Cancelled,
    Failed
};

// A file or folder as it was listed.
struct Item {
    QString root;   // the folder that the verbs stay below
    QString folder; // of the item; at or below the root, no separator at its end
    QString name;
    quint32 attributes = 0;
    quint32 reparseTag = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    std::optional<core::FileIdentity> identity = std::nullopt;

    QString path() const { return folder + u'\\' + name; }
    bool isFolder() const { return (attributes & core::AttributeDirectory) != 0; }
    // A junction, a mount point or a symbolic link, and not a placeholder of a cloud store. Tag 0 is how Wine
    // shows a link to a folder.
    bool isLink() const;
};

Item itemOf(const QString &root, const QString &folder, const core::DirectoryEntry &entry);

// Bytes that can be overwritten: a file, one of its streams, or a volume.
class Target
{
public:
    virtual ~Target() = default;
    virtual bool moveTo(quint64 position) = 0;
    virtual bool moveBack(quint64 bytes) = 0; // from where it stands
    // The number of bytes that were written; less than asked is no failure, 0 is.
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

// One file that is being destroyed, from its first byte to its name. Every step acts on the file that was
// listed, or on nothing: the first step compares, and from then on its identity counts.
class DoomedFile
{
public:
    virtual ~DoomedFile() = default;

    // Write-through, sharing everything. The target lives until the next step. `fault` says why there is
    // none.
    virtual Target *openForWriting(Fault &fault) = 0;
    virtual Target *openStream(const QString &stream, Fault &fault) = 0;
    // Of the open file.
    virtual quint32 linkCount() = 0;
    virtual std::vector<Stream> streams() = 0; // without the content itself
    // Where a sparse file has bytes of its own; empty when that cannot be told.
    virtual std::optional<std::vector<Range>> allocatedRanges() = 0;
    virtual quint64 freeBytes() = 0; // of its volume, for this user
    // What was open is closed.
    virtual void close() = 0;

    // The raw volume that holds this very file, held open meanwhile, with its clusters; null when there is
    // none that can be written to. The volume's object serves all files of that volume.
    virtual Target *openVolume(VolumeFacts &facts) = 0;
    virtual std::optional<std::vector<Extent>> extents() = 0;

    // Within its folder and never onto another file.
    virtual Fault rename(const QString &name) = 0;
    virtual Fault erase() = 0;
    virtual QString name() = 0;
    // Whether something bears the name again, or still, that it had at first.
    virtual bool formerNameExists() = 0;
};

// The disk, as far as destroying needs it. Implementations: the Win32 one, behind the guard of platform, and
// the one of the tests, which records every write. One thread.
class Disk
{
public:
    virtual ~Disk() = default;

    // As its folder lists it; empty when nothing bears the name.
    virtual std::optional<Item> find(const QString &root, const QString &folder, const QString &name) = 0;
    virtual void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) = 0;
    virtual std::unique_ptr<DoomedFile> file(const Item &item) = 0;
    // None when the folder is still the one that was listed, and not another one of its name.
    virtual Fault checkFolder(const Item &item) = 0;
    // The link itself, and nothing behind it.
    virtual Fault eraseLink(const Item &item) = 0;
    virtual Fault eraseFolder(const Item &item) = 0; // an empty one
    virtual bool isProtected(const Item &item) = 0;
    // A moment for others to let go of a file, before a step is tried again.
    virtual void pause() = 0;
};

} // namespace securedelete
