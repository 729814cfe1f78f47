// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/Clear.h"

#include "TrackCleaner/engine/RegistryClearing.h"

#include <QDebug>

namespace tracks
{

namespace
{

class Clearing
{
public:
    Clearing(const ClearPlan &plan, TraceRemover &remover, ClearListener &listener,
             const core::CancelFlag &cancel, ClearResult &result)
        : m_plan(plan),
          m_remover(remover),
          m_listener(listener),
          m_cancel(cancel),
          m_result(result)
    {
    }

    void removeFiles(Item item);

private:
    void removeFile(Item item, std::size_t row);

    const ClearPlan &m_plan;
    TraceRemover &m_remover;
    ClearListener &m_listener;
    const core::CancelFlag &m_cancel;
    ClearResult &m_result;
    int m_done = 0;
};

void Clearing::removeFiles(Item item)
{
    const FileTraces &files = (*m_plan.found)[item].files;
    quint32 folder = static_cast<quint32>(files.folderCount()); // none yet
    for (std::size_t row = 0; row < files.size() && !m_cancel.isSet(); ++row) {
        const quint32 next = files.at(row).folder;
        if (item == Item::RecentFiles && next != folder)
            qDebug() << files.folder(next);
        folder = next;
        if (isChosen(*m_plan.found, m_plan.leftOut, item, row))
            removeFile(item, row);
    }
}

void Clearing::removeFile(Item item, std::size_t row)
{
    const FileTraces &files = (*m_plan.found)[item].files;
    const FileTrace trace = files.at(row);
    const FileToRemove file{.root = files.trustedRoot(trace.folder),
                            .path = files.path(row),
                            .size = trace.size,
                            .lastWriteTime = trace.lastWriteTime,
                            .attributes = trace.attributes};
    m_listener.fileBegins(file.path, m_done++);
    const Outcome outcome = m_remover.remove(file);
    if (outcome == Outcome::Removed) {
        ++m_result.deletedFiles;
        m_result.deletedBytes += trace.size;
    } else if (outcome != Outcome::Vanished) {
        m_result.stayed.push_back({item, row, outcome});
    }
}

} // namespace

ClearTotals totalsOf(const ClearPlan &plan)
{
    ClearTotals totals;
    for (const CatalogueRow &catalogueRow : catalogue()) {
        const Item item = catalogueRow.item;
        if (!plan.items[indexOf(item)])
            continue;
        const ItemTraces &traces = (*plan.found)[item];
        for (std::size_t row = 0; row < traces.count(); ++row) {
            if (!isChosen(*plan.found, plan.leftOut, item, row))
                continue;
            totals.files += traces.isFile(row) ? 1 : 0;
            totals.values += traces.isFile(row) ? 0 : 1;
            totals.bytes += traces.isFile(row) ? traces.sizeOf(row) : 0;
        }
    }
    return totals;
}

ClearResult clearTraces(const ClearPlan &plan, TraceRegistry &registry, TraceRemover &remover,
                        ClearListener &listener, const core::CancelFlag &cancel)
{
    ClearResult result;
    Clearing clearing(plan, remover, listener, cancel, result);
    for (const CatalogueRow &row : catalogue()) {
        if (!plan.items[indexOf(row.item)] || cancel.isSet())
            continue;
        listener.itemBegins(row.item);
        clearRegistry(row.item, plan, registry, result);
        clearing.removeFiles(row.item);
        result.done[indexOf(row.item)] = true;
        listener.itemCleared(row.item);
    }
    result.cancelled = cancel.isSet();
    return result;
}

} // namespace tracks
