// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"
#include "platform/HeldFile.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <string>

// Protects every operation that removes, renames or overwrites. It is given an item as it was shown, opens it
// without following links, compares it, and acts on the opened object or not at all. A path alone may refer
// to another item by the time the user has answered.
namespace platform
{

enum class ItemKind {
    File,
    Folder,
    Link // the link itself: a junction or a symbolic link to a folder or a file
};

// An item of a folder as it was listed.
struct ListedItem {
    QString name; // a single path component
    ItemKind kind = ItemKind::File;
    // Compared for files only: a folder's time changes with its contents. `lastWriteTime` is a FILETIME.
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    // nullopt if it was not queried or is not available; then only size and time are compared.
    std::optional<core::FileIdentity> identity = std::nullopt;
    // Its file id within the volume: as good as the identity when it is opened again in the same folder
    // object, and much cheaper.
    std::optional<quint64> number = std::nullopt;
};

// A listed item with its location, as shown in a list of chosen items.
struct ShownItem {
    QString root; // folder chosen by the user, in any spelling; the item is below it
    QString path; // full path
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    std::optional<core::FileIdentity> identity;
    ItemKind kind = ItemKind::File;

    ListedItem listed() const;
    QString folder() const { return path.left(path.lastIndexOf(u'\\')); }
};

enum class Guarded {
    Done,
    Changed,     // kind, size, time or identity differ from what was shown: edited or replaced
    Vanished,    // the path does not exist any more
    ThroughLink, // the path contains or is a link, so the item is somewhere else
    InCloud,     // its content is in the cloud: reading downloads it, and deleting removes it there too
    Protected,   // a drive root, Windows, the program folders, a profile, or a parent of one of these
    Refused,     // wrong kind of item for the operation, or an unsupported path
    ReadOnly,    // has the read-only attribute
    InUse,       // another program has it open without sharing
    Denied,      // no rights
    NotEmpty,    // a folder with something in it
    NameTaken,   // by another item in the folder
    Failed,      // Windows failed for another reason
    Untraced     // gone from its place, but Windows did not report where the recycle bin put it
};

// The folder that the user chose. Held open, so that it cannot be replaced meanwhile; if it is a link, its
// target counts.
class GuardedRoot
{
public:
    // Does disk I/O.
    explicit GuardedRoot(const QString &root);

    const QString &path() const { return m_path; }

private:
    friend class GuardedFolder;

    QString m_path;
    std::wstring m_text; // verbatim path with a trailing separator
    FileHandle m_folder;
};

// An open item that is identical to the listed one. Operations act on the open object, whatever its path
// refers to meanwhile. Renaming or erasing fails once the folder object is destroyed.
class GuardedItem
{
public:
    // Done if there is an item to act on, otherwise the reason.
    Guarded state() const { return m_state; }
    // With the requested access; null unless state() is Done. Do not close it.
    HANDLE handle() const { return m_file.get(); }
    const QString &name() const { return m_name; }

    // A stream (":name:$DATA") of the open file, which must have been opened with Write.
    FileHandle openStream(const QString &stream, Guarded &result) const;
    // Renames within the folder, never replacing another item. The name is one path component. Renaming to
    // the current name returns Done.
    Guarded rename(const QString &name);
    // Deletes permanently; other hard links of a file remain. The name disappears when this object is
    // destroyed, or when the last program that shares the file closes it.
    Guarded erase();

private:
    friend class GuardedFolder;

    FileHandle m_file;
    HANDLE m_folder = nullptr; // handle of the folder object
    Guarded m_state = Guarded::Failed;
    QString m_name;
};

// A folder at or below the root that is not reached through a link; checked once for any number of its items.
// While this object lives, the folder and its parents cannot be renamed or removed (not so under Wine), and
// items are opened by name relative to this folder object. One thread at a time.
class GuardedFolder
{
public:
    // Does disk I/O.
    GuardedFolder(const GuardedRoot &root, const QString &folder);

    // Done if items can be opened; otherwise every operation returns this value.
    Guarded state() const { return m_state; }
    const QString &path() const { return m_path; }

    enum class Access {
        Query, // attributes only; does not block other programs
        Write, // write-through, full sharing; refused for read-only items
        Remove // for rename() and erase()
    };
    // Does disk I/O. Does not follow links or download from the cloud.
    GuardedItem open(const ListedItem &item, Access access) const;
    // The same as open() with Remove and erase(), with five system calls per item; DeleteFileW makes four.
    Guarded erase(const ListedItem &item) const;
    // Does disk I/O. For an item opened here. The volume is queried once for the folder: querying it per item
    // is many times slower.
    std::optional<core::FileIdentity> identityOf(const GuardedItem &item) const;

private:
    std::optional<core::FileIdentity> identityOf(HANDLE file) const;
    Guarded check(const GuardedRoot &root);
    Guarded compare(HANDLE file, const ListedItem &item, Access access) const;
    bool liesHere(HANDLE file, QStringView name) const;

    QString m_path;
    FileHandle m_folder;
    HeldFile::Form m_form = HeldFile::Form::Drive;
    std::wstring m_finalPath; // final path of the folder in that form, with a trailing separator
    mutable std::optional<core::FileIdentity> m_identity; // of the folder, once queried
    Guarded m_state;
};

// Erases a list of items one by one; consecutive items of one folder share its check.
class GuardedErasure
{
public:
    // Does disk I/O.
    Guarded erase(const ShownItem &item);
    // Releases the folder of the last item, so that it can be removed itself.
    void release();

private:
    std::optional<GuardedRoot> m_root;
    std::optional<GuardedFolder> m_folder;
};

// Does disk I/O. The current facts of a file or folder, for the program's own files and for lists that are
// acted on immediately; nullopt if it cannot be opened. Follows links, so that a link never equals its
// target.
std::optional<ShownItem> itemAsItIs(const QString &root, const QString &path);

// Does disk I/O. Erases a file or empty folder below the root that was created by this program.
Guarded eraseOwn(const QString &root, const QString &path);

} // namespace platform
