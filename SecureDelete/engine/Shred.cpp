// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/Shred.h"

#include "SecureDelete/engine/ShredFile.h"

namespace securedelete
{

namespace
{

class Job
{
public:
    Job(const ShredOptions &options, Disk &disk, PassBuffers &buffers, ShredListener &listener,
        const core::CancelFlag &cancel)
        : m_disk(disk),
          m_listener(listener),
          m_cancel(cancel),
          m_overwriter(options.method, options.randomPasses, buffers, listener, cancel),
          m_files(options, disk, m_overwriter, cancel)
    {
    }

    bool shredRow(const ShredRow &row);
    ShredResult takeResult() { return std::move(m_result); }

private:
    // A folder whose entries are being destroyed. Names are collected first, since a renamed entry may be
    // listed a second time.
    struct Open {
        Item folder;
        core::DirectoryListing entries;
        std::size_t next = 0;
    };

    bool shredFile(const Item &item);
    bool shredLink(const Item &item);
    bool shredFolder(const Item &item);
    void enter(std::vector<Open> &open, const Item &folder);
    void shredEntry(std::vector<Open> &open, const Item &item);
    bool leave(std::vector<Open> &open);
    void begin(const Item &item) { m_listener.itemBegins(item.path(), ++m_count); }
    bool note(const ShredRecord &record);
    bool noteFault(const Item &item, Fault fault);

    Disk &m_disk;
    ShredListener &m_listener;
    const core::CancelFlag &m_cancel;
    Overwriter m_overwriter;
    FileShredder m_files;
    ShredResult m_result;
    int m_count = 0;
};

bool Job::shredRow(const ShredRow &row)
{
    const Item &shown = row.item;
    const std::optional<Item> now = m_disk.find(shown.root, shown.folder, shown.name);
    if (!now)
        return row.isFile ? noteFault(shown, Fault::Vanished) : true;
    if (now->isFolder() == row.isFile || now->isLink() != shown.isLink())
        return noteFault(shown, Fault::Changed);
    if (m_disk.isProtected(shown))
        return noteFault(shown, Fault::Protected);
    // Identity, size and time are those of the row, attributes the current ones: the file may have become
    // read-only.
    Item item = shown;
    item.attributes = now->attributes;
    item.reparseTag = now->reparseTag;
    if (item.isLink())
        return shredLink(item);
    if (row.isFile)
        return shredFile(item);
    // Checked before the contents are touched: eraseFolder(), which compares as well, runs last.
    const Fault fault = m_disk.checkFolder(item);
    return fault == Fault::None ? shredFolder(item) : noteFault(item, fault);
}

bool Job::shredFile(const Item &item)
{
    begin(item);
    const ShredRecord record = m_files.shred(item);
    if (!record.destroyed)
        m_listener.bytesLeftOut(item.size * static_cast<quint64>(m_overwriter.passes()));
    return note(record);
}

bool Job::shredLink(const Item &item)
{
    begin(item);
    const Fault fault = m_disk.eraseLink(item);
    return note({.path = item.path(),
                 .isFolder = item.isFolder(),
                 .isLink = true,
                 .destroyed = fault == Fault::None,
                 .fault = fault});
}

// Iterative, so that a tree of any depth is handled.
bool Job::shredFolder(const Item &item)
{
    std::vector<Open> open;
    bool removed = false;
    enter(open, item);
    while (!open.empty()) {
        Open &top = open.back();
        if (m_cancel.isSet() || top.next == top.entries.size()) {
            removed = leave(open);
        } else {
            const Item entry = itemOf(item.root, top.folder.path(), top.entries.at(top.next++));
            shredEntry(open, entry);
        }
    }
    return removed;
}

void Job::enter(std::vector<Open> &open, const Item &folder)
{
    begin(folder);
    open.push_back({folder, {}, 0});
    m_disk.list(folder.path(), open.back().entries, m_cancel);
}

void Job::shredEntry(std::vector<Open> &open, const Item &item)
{
    if (item.isLink())
        shredLink(item);
    else if (!item.isFolder())
        shredFile(item);
    else if (m_disk.isProtected(item))
        noteFault(item, Fault::Protected);
    else
        enter(open, item);
}

// Returns true if the folder was removed.
bool Job::leave(std::vector<Open> &open)
{
    const Open done = std::move(open.back());
    open.pop_back();
    Fault fault = Fault::Cancelled;
    if (!m_cancel.isSet())
        fault = done.entries.readable ? m_disk.eraseFolder(done.folder) : Fault::Denied;
    return note({.path = done.folder.path(),
                 .isFolder = true,
                 .destroyed = fault == Fault::None || fault == Fault::Vanished,
                 .fault = fault == Fault::Vanished ? Fault::None : fault});
}

bool Job::note(const ShredRecord &record)
{
    m_result.records.push_back(record);
    return record.destroyed;
}

bool Job::noteFault(const Item &item, Fault fault)
{
    begin(item);
    m_listener.bytesLeftOut(item.size * static_cast<quint64>(m_overwriter.passes()));
    return note({.path = item.path(), .size = item.size, .isFolder = item.isFolder(), .fault = fault});
}

} // namespace

bool Item::isLink() const
{
    constexpr quint32 nameSurrogate = 0x20000000; // winnt.h, IsReparseTagNameSurrogate
    if ((attributes & core::AttributeReparsePoint) == 0)
        return false;
    return (reparseTag & nameSurrogate) != 0 || (reparseTag == 0 && isFolder());
}

Item itemOf(const QString &root, const QString &folder, const core::DirectoryEntry &entry)
{
    return {.root = root,
            .folder = folder,
            .name = entry.name.toString(),
            .attributes = entry.attributes,
            .reparseTag = entry.reparseTag,
            .size = entry.isDirectory() ? 0 : entry.size,
            .lastWriteTime = entry.lastWriteTime};
}

ShredResult shredRows(const std::vector<ShredRow> &rows, const ShredOptions &options, Disk &disk,
                      PassBuffers &buffers, ShredListener &listener, const core::CancelFlag &cancel)
{
    Job job(options, disk, buffers, listener, cancel);
    int destroyed = 0;
    for (std::size_t index = rows.size(); index-- > 0;) {
        if (cancel.isSet())
            break;
        listener.stepDone();
        if (!job.shredRow(rows[index]))
            continue;
        ++destroyed;
        listener.rowDestroyed(static_cast<int>(index));
    }
    listener.stepDone();
    ShredResult result = job.takeResult();
    result.rowsLeft = static_cast<int>(rows.size()) - destroyed;
    result.cancelled = cancel.isSet();
    return result;
}

} // namespace securedelete
