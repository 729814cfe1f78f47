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

// The source of a walk's listings: one that a pool thread has finished, or, if no thread has started that
// folder, one that the walking thread makes itself. The pool lists what the walk will need next: of all known
// folders that have not been started, the first in walk order. It never follows a link on its own. The walk
// sees the same listings with any number of threads.
// All public functions must be called on the walking thread.
class ReadAhead
{
public:
    // More threads only block each other: the file system holds locks while it lists a folder, a hard disk
    // has one head, and a share serves few requests at a time.
    static constexpr int maxThreads = 4;

    // One folder of the walk, from the start of its listing until release().
    class Folder
    {
    public:
        const DirectoryListing &listing() const { return m_listing; }

    private:
        friend class ReadAhead;

        DirectoryListing m_listing;
        QString m_path;          // kept while the pool may still start subfolders
        std::size_t m_entry = 0; // index of this folder in the parent's listing
        bool m_listed = false;
        bool m_failed = false;    // listing it threw an exception
        bool m_abandoned = false; // skipped by the walk while it was being listed

        // Subfolders that the pool may start, as indexes into the listing, and the position of the first that
        // has not been started.
        std::vector<quint32> m_subfolders;
        std::size_t m_nextSubfolder = 0;

        // Subfolders that the pool has started and the walk has not reached, in order.
        Folder *m_firstBegun = nullptr;
        Folder *m_lastBegun = nullptr;
        Folder *m_nextSibling = nullptr;

        // See ReadAhead::m_first.
        Folder *m_before = nullptr;
        Folder *m_after = nullptr;
        bool m_linked = false;
    };

    ReadAhead(DirectoryEnumerator &enumerator, const CancelFlag &cancel, const WalkOptions &options);
    // Waits for the running listings, which end early if the cancel flag is set.
    ~ReadAhead();
    ReadAhead(const ReadAhead &) = delete;
    ReadAhead &operator=(const ReadAhead &) = delete;

    Folder *openRoot(const QString &path);
    // Opens the folder of entry number `entry` of `parent`. The folders of one parent must be opened or
    // skipped in order.
    Folder *open(Folder *parent, std::size_t entry, const QString &path);
    // The walk skips the folder of that entry.
    void skip(Folder *parent, std::size_t entry);
    // The walk is finished with a folder, or leaves it early.
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
    DirectoryListing m_scratch; // used by the walking thread

    // Guards everything below, and the folders except for finished listings.
    std::mutex m_mutex;
    std::condition_variable m_work;  // the pool waits here
    std::condition_variable m_ready; // the walk waits here
    const Folder *m_awaited = nullptr;
    // Linked list in walk order: folders that the pool is listing, and listed folders with subfolders that
    // have not been started.
    Folder *m_first = nullptr;
    std::size_t m_readyEntries = 0; // in folders that the pool has listed and the walk has not opened
    bool m_full = false;
    int m_idleThreads = 0;
    bool m_stop = false;
    std::vector<std::unique_ptr<Folder>> m_all;
    std::vector<Folder *> m_free;
    std::vector<std::thread> m_threads;
};

} // namespace core
