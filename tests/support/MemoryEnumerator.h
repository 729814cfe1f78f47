// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/DirectoryEnumerator.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <optional>

namespace tests
{

// A file system in memory, for the engines' tests. Paths are written as the walk writes them ("C:\a\b"; the
// first component may be anything), names are compared ignoring case, entries are listed in the order in
// which they were added. Folders above an added path come into being by themselves.
//
//     MemoryEnumerator disk;
//     disk.addFile("C:\\r\\a.txt", 700);
//     disk.addLink("C:\\r\\loop", "C:\\r");
//     disk.setUnreadable("C:\\r\\secret");
//
// Build the tree first; list() and identity() may then be called from several threads.
class MemoryEnumerator : public core::DirectoryEnumerator
{
public:
    static constexpr quint32 mountPointTag = 0xA0000003;   // winnt.h, IO_REPARSE_TAG_MOUNT_POINT (junctions)
    static constexpr quint32 symbolicLinkTag = 0xA000000C; // winnt.h, IO_REPARSE_TAG_SYMLINK
    static constexpr quint32 cloudTag = 0x9000001A;        // winnt.h, IO_REPARSE_TAG_CLOUD
    static constexpr int linksInAPath = 63;                // where Windows gives a path up

    void addFolder(const QString &path, quint32 attributes = core::AttributeDirectory, quint32 reparseTag = 0)
    {
        if (m_byPath.contains(key(path)))
            return;
        core::DirectoryEntry entry;
        entry.attributes = attributes | core::AttributeDirectory;
        entry.reparseTag = reparseTag;
        addNode(path, entry);
    }

    void addFile(const QString &path, quint64 size, quint64 lastWriteTime = 0, quint64 lastAccessTime = 0,
                 quint64 creationTime = 0)
    {
        core::DirectoryEntry entry;
        entry.size = size;
        entry.lastWriteTime = lastWriteTime;
        entry.lastAccessTime = lastAccessTime;
        entry.creationTime = creationTime;
        addEntry(path, entry);
    }

    // A file of any kind; the entry's name is not used.
    void addEntry(const QString &path, core::DirectoryEntry entry)
    {
        const qsizetype cut = path.lastIndexOf(u'\\');
        const QString name = path.sliced(cut + 1);
        entry.name = name;
        m_nodes[folderAt(path.first(qMax<qsizetype>(cut, 0)))].listing.add(entry);
    }

    // A link to a folder; its target may be missing, or added later. Tag 0 is a symbolic link as Wine shows
    // it.
    void addLink(const QString &path, const QString &target, quint32 reparseTag = mountPointTag)
    {
        core::DirectoryEntry entry;
        entry.attributes = core::AttributeDirectory | core::AttributeReparsePoint;
        entry.reparseTag = reparseTag;
        m_nodes[addNode(path, entry)].target = target;
    }

    // The folder is shown by its parent and cannot be listed.
    void setUnreadable(const QString &path) { m_nodes[folderAt(path)].listing.readable = false; }

    // Listing the folder breaks off after what it holds.
    void setBrokenOff(const QString &path) { m_nodes[folderAt(path)].listing.brokenOff = true; }

    // The object cannot be opened: identity() has no answer.
    void setUnidentified(const QString &path) { m_nodes[folderAt(path)].identified = false; }

    // Called at the start of every list(), on its thread.
    std::function<void(const QString &folder)> onList;

    int listCount() const
    {
        const QMutexLocker lock(&m_mutex);
        return static_cast<int>(m_listed.size());
    }
    int identityCount() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_identityCount;
    }
    // Every folder that list() was asked for, in order.
    QStringList listed() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_listed;
    }
    // Off for measurements.
    void setRecording(bool recording) { m_recording = recording; }

    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override
    {
        if (m_recording) {
            const QMutexLocker lock(&m_mutex);
            m_listed.append(folder);
        }
        if (onList)
            onList(folder);
        const int node = resolve(folder);
        if (node < 0 || cancel.isSet())
            out.clear();
        else
            out = m_nodes[static_cast<std::size_t>(node)].listing;
        if (!out.readable)
            out.clear();
    }

    std::optional<core::FileIdentity> identity(const QString &path) override
    {
        if (m_recording) {
            const QMutexLocker lock(&m_mutex);
            ++m_identityCount;
        }
        const int node = resolve(path);
        if (node < 0 || !m_nodes[static_cast<std::size_t>(node)].identified)
            return std::nullopt;
        return core::FileIdentity{1, static_cast<quint64>(node)};
    }

private:
    struct Node {
        core::DirectoryListing listing;
        std::optional<QString> target; // of a link
        bool identified = true;
    };

    static QString key(const QString &path) { return path.toLower(); }

    std::size_t addNode(const QString &path, const core::DirectoryEntry &entry)
    {
        const qsizetype cut = path.lastIndexOf(u'\\');
        if (cut >= 0)
            list(folderAt(path.first(cut)), path.sliced(cut + 1), entry);
        return makeNode(path);
    }

    // No recursion from a folder to the one above it: a Windows stack does not hold thousands of levels.
    std::size_t folderAt(const QString &path)
    {
        QString known = path;
        QStringList missing;
        while (!m_byPath.contains(key(known))) {
            const qsizetype cut = known.lastIndexOf(u'\\');
            missing.append(known.sliced(cut + 1));
            if (cut < 0) {
                makeNode(known);
                missing.removeLast();
                break;
            }
            known.truncate(cut);
        }
        std::size_t node = static_cast<std::size_t>(m_byPath.value(key(known)));
        core::DirectoryEntry folder;
        folder.attributes = core::AttributeDirectory;
        while (!missing.isEmpty()) {
            const QString name = missing.takeLast();
            list(node, name, folder);
            known += u'\\' + name;
            node = makeNode(known);
        }
        return node;
    }

    void list(std::size_t parent, const QString &name, core::DirectoryEntry entry)
    {
        entry.name = name;
        m_nodes[parent].listing.add(entry);
    }

    std::size_t makeNode(const QString &path)
    {
        m_nodes.emplace_back();
        m_nodes.back().listing.readable = true;
        m_byPath.insert(key(path), static_cast<int>(m_nodes.size()) - 1);
        return m_nodes.size() - 1;
    }

    // The node that a path ends at, links followed; -1 when there is none.
    int resolve(QString path) const
    {
        for (int links = 0; links <= linksInAPath; ++links) {
            const int node = m_byPath.value(key(path), -1);
            if (node >= 0 && !m_nodes[static_cast<std::size_t>(node)].target)
                return node;
            const std::optional<QString> onward = throughFirstLink(path);
            if (!onward)
                return -1;
            path = *onward;
        }
        return -1;
    }

    // The path with the first link in it replaced by its target.
    std::optional<QString> throughFirstLink(const QString &path) const
    {
        for (qsizetype end = path.indexOf(u'\\');; end = path.indexOf(u'\\', end + 1)) {
            const QString above = end < 0 ? path : path.first(end);
            const int node = m_byPath.value(key(above), -1);
            if (node < 0)
                return std::nullopt;
            if (const auto &target = m_nodes[static_cast<std::size_t>(node)].target)
                return *target + (end < 0 ? QString() : path.sliced(end));
            if (end < 0)
                return std::nullopt;
        }
    }

    std::deque<Node> m_nodes;
    QHash<QString, int> m_byPath;
    bool m_recording = true;
    mutable QMutex m_mutex;
    QStringList m_listed;
    int m_identityCount = 0;
};

// Hands a file system that outlives the scans to a form, which wants one of its own for each.
class BorrowedEnumerator : public core::DirectoryEnumerator
{
public:
    explicit BorrowedEnumerator(core::DirectoryEnumerator &disk) : m_disk(disk) {}
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel) override
    {
        m_disk.list(folder, out, cancel);
    }
    std::optional<core::FileIdentity> identity(const QString &path) override { return m_disk.identity(path); }

private:
    core::DirectoryEnumerator &m_disk;
};

} // namespace tests
