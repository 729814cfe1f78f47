// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Shred.h"
#include "core/ScanProgress.h"
#include "core/WorkerThread.h"

#include <QHash>

#include <optional>
#include <vector>

struct SecureDeleteJob {
    enum class Mode { Items, RecycleBin };

    Mode mode = Mode::Items;
    std::vector<securedelete::ShredRow> rows; // destroyed from the last to the first
    // Of a recycle bin: the index file of each row, destroyed after it, or nothing.
    std::vector<std::optional<securedelete::ShredRow>> indexes;
    // The report names an item of a recycle bin by the path that it had, which stands here by that of its
    // row.
    QHash<QString, QString> shownPaths;
    securedelete::ShredOptions options;
    quint64 bytes = 0; // of all files, as counted; 0 when unknown
};

// Destroys what was chosen. The pass buffers are those of the process, so one runs at a time.
class SecureDeleteThread : public core::WorkerThread
{
    Q_OBJECT

public:
    // The relay takes path, items and bytes, and lives longer.
    SecureDeleteThread(SecureDeleteJob job, core::ProgressRelay &relay);

    // After deleteFinish().
    securedelete::ShredResult takeResult() { return std::move(m_result); }

signals:
    void updateTotalProgress(int total);
    void updateDeleteProgress();
    void rowDestroyed(int row);
    void deleteFinish();

protected:
    void work() override;

private:
    void nameByFormerPaths();
    void destroyIndexes(securedelete::Disk &disk, securedelete::ShredListener &listener,
                        const QList<int> &destroyed);

    SecureDeleteJob m_job;
    core::ProgressRelay &m_relay;
    securedelete::ShredResult m_result;
};
