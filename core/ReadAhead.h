// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"
#include "core/FolderWalk.h"

#include <QString>

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace core
{

// Where a walk gets its listings from: one that a pool thread has ready, or, when none has begun the folder,
// one that the walking thread makes itself. The pool lists what the walk will need next: of all folders known
// and not begun, the first in the order of the walk. It never follows a link on its own. A walk sees the same
// listings whatever the number of threads.
//
// All public functions belong to the walking thread.
class ReadAhead
{
public:
    // More threads than this only block each other: the file system holds locks while it lists a folder, a
    // hard disk has one head, and a share serves a few requests at a time.
    static constexpr int maxThreads = 4;

    // One folder of the walk, from the moment when its listing is begun until release().
    class Folder
    {
    public:
        const DirectoryListing &listing() const { return m_listing; }

    private:
        friend class ReadAhead;

        DirectoryListing m_listing;
        QString m_path;          // kept while subfolders are to be begun by the pool
        std::size_t m_entry = 0; // index in the parent's listing
        bool m_listed = false;
        bool m_failed = false;    // listing it threw
        bool m_abandoned = false; // the walk left it out while it was being listed

        // The subfolders that the pool may begin, as indexes into the listing, and the first not begun.
        std::vector<quint32> m_subfolders;
        std::size_t m_nextSubfolder = 0;

        // The subfolders that the pool has begun and the walk has not reached, in order.
        Folder *m_firstBegun = nullptr;
        Folder *m_lastBegun = nullptr;
        Folder *m_nextSibling = nullptr;

        // See ReadAhead::m_first.
        Folder *m_before = nullptr;
        Folder *m_after = nullptr;
        bool m_linked = false;
    };

    ReadAhead(DirectoryEnumerator &enumerator, const CancelFlag &cancel, const WalkOptions &options);
    // Waits for the listings in progress; they end early when the cancel flag is set.
    ~ReadAhead();
    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;

    Folder *openRoot(const QString &path);
    // The folder of entry number `entry` of `parent`. The folders of one parent are opened or skipped in
    // their order.
    Folder *open(Folder *parent, std::size_t entry, const QString &path);
    // The walk leaves out the folder of that entry.
    void skip(Folder *parent, std::size_t entry);
    // The walk is done with a folder, or leaves it early.
    void release(Folder *folder);

private:
    using Lock = std::unique_lock<std::mutex>;

    void startPool();
    void runPool();
    Folder *beginNext();
    void listBegun(Folder *folder, DirectoryListing &scratch, Lock &lock);
    Folder *listNow(const QString &path, Lock &lock);
    void list(Folder *folder, const QString &path, DirectoryListing &scratch) const;
    void findSubfolders(Folder *folder, const QString &path) const;
    Folder *takeBegun(Folder *parent, std::size_t entry);
    void waitFor(const Folder *folder, Lock &lock);
    void passSubfolder(Folder *folder);
    void abandon(Folder *folder);
    void addReady(const Folder *folder);
    void removeReady(const Folder *folder);
    void announceWork();

    Folder *newFolder();
    void freeFolder(Folder *folder);
    void linkBefore(Folder *folder, Folder *place);
    void unlink(Folder *folder);

    DirectoryEnumerator &m_enumerator;
    const CancelFlag &m_cancel;
    const WalkOptions &m_options;
    DirectoryListing m_scratch; // of the walking thread

    // Guards everything below, and the folders except the finished listings.
    std::mutex m_mutex;
    std::condition_variable m_work;  // the pool waits here
    std::condition_variable m_ready; // the walk waits here
    const Folder *m_awaited = nullptr;
    // Linked list in walk order: the folders that the pool is listing, and listed folders with subfolders
    // that nobody has begun to list.
    Folder *m_first = nullptr;
    std::size_t m_readyEntries = 0; // in folders listed by the pool and not opened
    bool m_full = false;
    int m_idleThreads = 0;
    bool m_stop = false;
    std::vector<std::unique_ptr<Folder>> m_all;
    std::vector<Folder *> m_free;
    std::vector<std::thread> m_threads;
};

} // namespace core
