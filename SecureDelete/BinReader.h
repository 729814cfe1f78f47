// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/RecycleIndex.h"
#include "SecureDelete/engine/Shred.h"
#include "core/WorkerThread.h"

#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace securedelete
{

// An item of a recycle bin.
struct BinRow {
    QString name;           // original name
    QString originalFolder; // empty if the bin has no record of it
    quint64 files = 1;
    quint64 size = 0;
    quint64 removedTime = 0;       // FILETIME; 0 if the bin has no record of it
    ShredRow content;              // the item, or its index file if that is all there is
    std::optional<ShredRow> index; // the index file beside the item

    // The original path, or the current one if the bin has no record of it.
    QString shownPath() const
    {
        return originalFolder.isEmpty() ? content.item.path() : originalFolder + u'\\' + name;
    }
};

// Reads the recycle bins of the user who runs the program.
class BinReader : public core::WorkerThread
{
    Q_OBJECT

public:
    using BinFolders = std::function<QStringList()>;

    explicit BinReader(BinFolders folders) : WorkerThread(LowPriority), m_folders(std::move(folders)) {}

    // Valid after done().
    std::vector<BinRow> takeRows() { return std::move(m_rows); }
    int bins() const { return m_bins; }

protected:
    void work() override;

private:
    void read(const QString &folder);

    const BinFolders m_folders;
    std::vector<BinRow> m_rows;
    int m_bins = 0;
};

} // namespace securedelete
