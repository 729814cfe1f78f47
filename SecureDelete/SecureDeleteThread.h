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
    // For a recycle bin: the index file of each row, destroyed after its item, or nothing.
    std::vector<std::optional<securedelete::ShredRow>> indexes;
    // For a recycle bin: the original path that the report shows, by the path of the row.
    QHash<QString, QString> shownPaths;
    securedelete::ShredOptions options;
    quint64 bytes = 0; // of all files, as counted; 0 if unknown
};

// Destroys the chosen items. The pass buffers are shared by the process, so only one instance may run at a
// time.
class SecureDeleteThread : public core::WorkerThread
{
    Q_OBJECT

public:
    // The relay receives path, items and bytes; it must outlive the thread.
    SecureDeleteThread(SecureDeleteJob job, core::ProgressRelay &relay);

    // Valid after deleteFinish().
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
