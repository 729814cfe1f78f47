// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"
#include "platform/HeldFile.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <string>

// The guard of every verb that removes, renames or overwrites. It is given an item as it was shown, opens
// that item without following a link, compares, and acts on what it has opened, or on nothing. A path alone
// may name another item by the time the user has answered.
namespace platform
{

enum class ItemKind {
    File,
    Folder,
    Link // the link itself: a junction or a symbolic link to a folder or a file
};

// An item of a folder as it was listed.
struct ListedItem {
    QString name; // one component
    ItemKind kind = ItemKind::File;
    // Compared for files only: a folder's time changes with what it holds. `lastWriteTime` is a FILETIME.
    quint64 size = 0;
    quint64 lastWriteTime = 0;
    // Empty when it was not asked for, or the file system does not tell; then size and time must do.
    std::optional<core::FileIdentity> identity = std::nullopt;
    // Its number in the volume: as good as the identity for one that is opened in the same folder object
    // again, and far cheaper.
    std::optional<quint64> number = std::nullopt;
};

// The same with its place: what a list of chosen items shows.
struct ShownItem {
    QString root; // the folder that the user chose, in any spelling; the item lies below it
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
    Changed,     // another kind, size, time or identity than shown: edited or replaced
    Vanished,    // nothing bears the path any more
    ThroughLink, // the path leads through a link, or is one, so that the item lies somewhere else
    InCloud,     // its content is in a cloud store: reading fetches it, removing removes it there as well
    Protected,   // a drive root, Windows, the program folders, a profile, or a folder above one of them
    Refused,     // not an item of the kind that the verb takes, or a path that cannot be taken
    ReadOnly,    // has the read-only attribute
    InUse,       // another program has it open and does not share it
    Denied,      // no rights
    NotEmpty,    // a folder with something in it
    NameTaken,   // by another item of the folder
    Failed       // Windows did not do it, for another reason
};

// The folder that the user chose. Held, so that no other folder takes its place meanwhile; a chosen folder
// that is a link is the folder that it leads to.
class GuardedRoot
{
public:
    // Disk.
    explicit GuardedRoot(const QString &root);

    const QString &path() const { return m_path; }

private:
    friend class GuardedFolder;

    QString m_path;
    std::wstring m_text; // verbatim, with a separator at the end
    FileHandle m_folder;
};

// An item that is held and is the one that was listed. Its verbs act on the held object, whatever the path
// names meanwhile. A rename or erasure of an item whose folder object is gone fails.
class GuardedItem
{
public:
    // Whether there is an item to act on; if not, why.
    Guarded state() const { return m_state; }
    // For the access that was asked for; none unless state() is Done. Not to be closed.
    HANDLE handle() const { return m_file.get(); }
    const QString &name() const { return m_name; }

    // A stream of the held file, opened as the file was for Write; ":name:$DATA".
    FileHandle openStream(const QString &stream, Guarded &result) const;
    // Within its folder, never onto another item. The name is one component. Onto its own name: Done.
    Guarded rename(const QString &name);
    // For good. Of a file one name; other hard links stay. The item is gone when this object goes, or when
    // the last program that shares it closes it.
    Guarded erase();

private:
    friend class GuardedFolder;

    FileHandle m_file;
    HANDLE m_folder = nullptr; // of the folder object
    Guarded m_state = Guarded::Failed;
    QString m_name;
};

// A folder at or below the root that no link leads to, checked once for any number of its items. Held while
// it lives: it and the folders above it cannot be renamed or removed (Wine does not keep that), and items are
// opened by their name in this very folder object. One thread at a time.
class GuardedFolder
{
public:
    // Disk.
    GuardedFolder(const GuardedRoot &root, const QString &folder);

    // Done when it can be acted in. Otherwise every verb answers this.
    Guarded state() const { return m_state; }
    const QString &path() const { return m_path; }

    enum class Access {
        Look,  // attributes only; blocks no other program
        Write, // write-through; others may share everything. Refused for what is read-only
        Remove // for rename() and erase()
    };
    // Disk. Follows no link and fetches nothing from a cloud store.
    GuardedItem open(const ListedItem &item, Access access) const;
    // The same as open() with Remove and erase(): five calls an item, of which DeleteFileW makes four.
    Guarded erase(const ListedItem &item) const;
    // Disk. Of an item that was opened here. The volume is the folder's, and asked for once: an item's own
    // answer costs many times as much.
    std::optional<core::FileIdentity> identityOf(const GuardedItem &item) const;

private:
    std::optional<core::FileIdentity> identityOf(HANDLE file) const;
    Guarded check(const GuardedRoot &root);
    Guarded compare(HANDLE file, const ListedItem &item, Access access) const;
    bool liesHere(HANDLE file, QStringView name) const;

    QString m_path;
    FileHandle m_folder;
    HeldFile::Form m_form = HeldFile::Form::Drive;
    std::wstring m_finalPath; // of the folder in that form, with a separator at the end
    mutable std::optional<core::FileIdentity> m_identity; // of the folder, when it was asked for
    Guarded m_state;
};

// Erases items of a list one after the other; neighbours in one folder share the check of it.
class GuardedErasure
{
public:
    // Disk.
    Guarded erase(const ShownItem &item);
    // Lets go of the folder of the last item, so that it can be removed itself.
    void release();

private:
    std::optional<GuardedRoot> m_root;
    std::optional<GuardedFolder> m_folder;
};

// Disk. A file or folder as it is now, for what the program itself has made and for lists that are acted on
// at once; empty when it cannot be opened. Follows links, so that a link never equals what it leads to.
std::optional<ShownItem> itemAsItIs(const QString &root, const QString &path);

// Disk. Erases a file, or an empty folder, that the program itself has made below the root.
Guarded eraseOwn(const QString &root, const QString &path);

} // namespace platform
