// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/ReadAhead.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

namespace core
{

namespace
{

// Longer listings are handed over as they are; shorter ones are copied into a buffer of matching size, so
// that the large buffer can be reused for the next folder.
constexpr std::size_t longListing = 4096;

// Buffers of short listings are pooled, up to this many: most folders are short, and the threads then rarely
// contend for the heap's lock, where the interface would wait too. At most 30 MB.
constexpr std::size_t keptListing = 64;
constexpr std::size_t keptListings = 4096;

// An empty folder takes memory as well.
std::size_t weight(const DirectoryListing &listing)
{
    return listing.size() + 1;
}

QString pathOf(const QString &folder, QStringView name)
{
    QString path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    path += QLatin1Char('\\');
    path += name;
    return path;
}

} // namespace

ReadAhead::ReadAhead(DirectoryEnumerator &enumerator, const CancelFlag &cancel, const WalkOptions &options)
    : m_enumerator(enumerator),
      m_cancel(cancel),
      m_options(options)
{
    startPool();
}

ReadAhead::~ReadAhead()
{
    {
        const Lock lock(m_mutex);
        m_stop = true;
    }
    m_work.notify_all();
    for (std::thread &thread : m_threads)
        thread.join();
}

ReadAhead::Folder *ReadAhead::openRoot(const QString &path)
{
    Lock lock(m_mutex);
    return listNow(path, lock);
}

ReadAhead::Folder *ReadAhead::open(Folder *parent, std::size_t entry, const QString &path)
{
    Lock lock(m_mutex);
    if (Folder *begun = takeBegun(parent, entry)) {
        waitFor(begun, lock);
        removeReady(begun);
        if (!begun->m_failed)
            return begun;
        freeFolder(begun);
        return listNow(path, lock); // thrown here, so that the walk's caller can catch it
    }
    if (parent->m_linked && parent->m_subfolders[parent->m_nextSubfolder] == entry)
        passSubfolder(parent);
    return listNow(path, lock);
}

void ReadAhead::skip(Folder *parent, std::size_t entry)
{
    const Lock lock(m_mutex);
    if (Folder *begun = takeBegun(parent, entry))
        abandon(begun);
    else if (parent->m_linked && parent->m_subfolders[parent->m_nextSubfolder] == entry)
        passSubfolder(parent);
}

void ReadAhead::release(Folder *folder)
{
    const Lock lock(m_mutex);
    while (Folder *begun = folder->m_firstBegun) {
        folder->m_firstBegun = begun->m_nextSibling;
        abandon(begun);
    }
    unlink(folder);
    freeFolder(folder);
}

void ReadAhead::startPool()
{
    try {
        for (int i = 0; i < std::min(m_options.readAheadThreads, maxThreads); ++i)
            m_threads.emplace_back([this] { runPool(); });
    } catch (const std::system_error &) {
        // Starting fewer threads is fine: the walk works with any number.
    }
}

void ReadAhead::runPool()
{
    DirectoryListing scratch;
    Lock lock(m_mutex);
    while (!m_stop) {
        Folder *folder = nullptr;
        try {
            folder = beginNext();
        } catch (const std::bad_alloc &) {
            return; // out of memory: the walk goes on without this thread
        }
        if (folder != nullptr) {
            announceWork();
            listBegun(folder, scratch, lock);
        } else {
            ++m_idleThreads;
            m_work.wait(lock);
            --m_idleThreads;
        }
    }
}

// Null when there is no folder left to start.
ReadAhead::Folder *ReadAhead::beginNext()
{
    Folder *parent = m_full ? nullptr : m_first;
    while (parent != nullptr && !parent->m_listed) // at most as many as there are threads
        parent = parent->m_after;
    if (parent == nullptr)
        return nullptr;

    Folder *folder = newFolder();
    folder->m_entry = parent->m_subfolders[parent->m_nextSubfolder];
    folder->m_path = pathOf(parent->m_path, parent->m_listing.at(folder->m_entry).name);
    (parent->m_firstBegun ? parent->m_lastBegun->m_nextSibling : parent->m_firstBegun) = folder;
    parent->m_lastBegun = folder;
    linkBefore(folder, parent);
    passSubfolder(parent);
    return folder;
}

void ReadAhead::listBegun(Folder *folder, DirectoryListing &scratch, Lock &lock)
{
    lock.unlock();
    try {
        list(folder, folder->m_path, scratch);
    } catch (...) {
        folder->m_failed = true;
        folder->m_listing.clear();
        folder->m_subfolders.clear();
    }
    lock.lock();

    if (folder->m_abandoned) {
        unlink(folder);
        freeFolder(folder);
        return;
    }
    folder->m_listed = true;
    addReady(folder);
    if (folder->m_subfolders.empty()) {
        unlink(folder);
        folder->m_path.clear();
    } else {
        announceWork();
    }
    if (folder == m_awaited)
        m_ready.notify_one();
}

ReadAhead::Folder *ReadAhead::listNow(const QString &path, Lock &lock)
{
    Folder *folder = newFolder();
    lock.unlock();
    list(folder, path, m_scratch);
    lock.lock();
    folder->m_listed = true;
    if (!folder->m_subfolders.empty()) {
        folder->m_path = path;
        linkBefore(folder, m_first); // the walk needs the contents of its current folder first
        announceWork();
    }
    return folder;
}

void ReadAhead::list(Folder *folder, const QString &path, DirectoryListing &scratch) const
{
    m_enumerator.list(path, scratch, m_cancel);
    if (scratch.size() > longListing)
        folder->m_listing = std::exchange(scratch, {});
    else
        folder->m_listing.assign(scratch);
    if (m_options.readAheadThreads > 0)
        findSubfolders(folder, path);
}

void ReadAhead::findSubfolders(Folder *folder, const QString &path) const
{
    for (std::size_t i = 0; i < folder->m_listing.size(); ++i) {
        const DirectoryEntry entry = folder->m_listing.at(i);
        if (!entry.isDirectory() || entry.mayBeLink())
            continue;
        if (m_options.mayListAhead && !m_options.mayListAhead(pathOf(path, entry.name)))
            continue;
        folder->m_subfolders.push_back(static_cast<quint32>(i));
    }
}

ReadAhead::Folder *ReadAhead::takeBegun(Folder *parent, std::size_t entry)
{
    Folder *begun = parent->m_firstBegun;
    if (begun == nullptr || begun->m_entry != entry)
        return nullptr;
    parent->m_firstBegun = std::exchange(begun->m_nextSibling, nullptr);
    return begun;
}

// Lists other folders while waiting. If the walk slept until the pool has finished the folder that it needs,
// it would then catch up with the pool at once, and from then on only one of the two would ever work.
void ReadAhead::waitFor(const Folder *folder, Lock &lock)
{
    while (!folder->m_listed) {
        if (Folder *other = beginNext()) {
            listBegun(other, m_scratch, lock);
            continue;
        }
        m_awaited = folder;
        m_ready.wait(lock);
        m_awaited = nullptr;
    }
}

void ReadAhead::passSubfolder(Folder *folder)
{
    if (++folder->m_nextSubfolder == folder->m_subfolders.size()) {
        unlink(folder);
        folder->m_path.clear(); // deep nesting would otherwise keep thousands of long paths
    }
}

void ReadAhead::abandon(Folder *folder)
{
    std::vector<Folder *> left{folder};
    while (!left.empty()) {
        Folder *one = left.back();
        left.pop_back();
        if (!one->m_listed) {
            one->m_abandoned = true; // freed by the thread that lists it
            continue;
        }
        for (Folder *begun = one->m_firstBegun; begun != nullptr; begun = begun->m_nextSibling)
            left.push_back(begun);
        removeReady(one);
        unlink(one);
        freeFolder(one);
    }
}

void ReadAhead::addReady(const Folder *folder)
{
    m_readyEntries += weight(folder->m_listing);
    m_full = m_full || m_readyEntries >= m_options.readAheadEntries;
}

void ReadAhead::removeReady(const Folder *folder)
{
    m_readyEntries -= weight(folder->m_listing);
    // Not for every folder taken: the pool would wake up for one folder at a time.
    if (m_full && m_readyEntries <= m_options.readAheadEntries / 4 * 3) {
        m_full = false;
        announceWork();
    }
}

void ReadAhead::announceWork()
{
    if (m_idleThreads > 0 && m_first != nullptr && !m_full)
        m_work.notify_one();
}

ReadAhead::Folder *ReadAhead::newFolder()
{
    if (m_free.empty()) {
        if (m_free.capacity() <= m_all.size())
            m_free.reserve(2 * m_all.size() + 1); // so that returning a folder cannot fail
        m_all.push_back(std::make_unique<Folder>());
        return m_all.back().get();
    }
    Folder *folder = m_free.back();
    m_free.pop_back();
    return folder;
}

void ReadAhead::freeFolder(Folder *folder)
{
    DirectoryListing listing = std::move(folder->m_listing);
    *folder = {};
    if (listing.size() <= keptListing && m_free.size() < keptListings) {
        listing.clear();
        folder->m_listing = std::move(listing);
    }
    m_free.push_back(folder);
}

// At the end if `place` is null, which only happens for an empty list.
void ReadAhead::linkBefore(Folder *folder, Folder *place)
{
    folder->m_after = place;
    folder->m_before = place ? place->m_before : nullptr;
    (folder->m_before ? folder->m_before->m_after : m_first) = folder;
    if (place != nullptr)
        place->m_before = folder;
    folder->m_linked = true;
}

void ReadAhead::unlink(Folder *folder)
{
    if (!folder->m_linked)
        return;
    (folder->m_before ? folder->m_before->m_after : m_first) = folder->m_after;
    if (folder->m_after != nullptr)
        folder->m_after->m_before = folder->m_before;
    folder->m_before = folder->m_after = nullptr;
    folder->m_linked = false;
}

} // namespace core
