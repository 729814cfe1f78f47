// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/SecureDeleteThread.h"

#include "SecureDelete/Win32Disk.h"
#include "platform/RecycleBinFolders.h"

using namespace securedelete;

namespace
{

class Listener : public ShredListener
{
public:
    explicit Listener(core::ProgressRelay &relay) : m_relay(relay) {}

    void bytesWritten(quint64 bytes) override { m_relay.setBytes(m_bytes += bytes); }
    void bytesLeftOut(quint64 bytes) override { m_relay.setBytes(m_bytes += bytes); }
    void stepDone() override
    {
        if (onStep)
            onStep();
    }
    void itemBegins(const QString &path, int count) override
    {
        m_relay.setPath(path);
        m_relay.setItems(count);
    }
    void rowDestroyed(int row) override
    {
        if (onDestroyed)
            onDestroyed(row);
    }

    std::function<void()> onStep;
    std::function<void(int row)> onDestroyed;

private:
    core::ProgressRelay &m_relay;
    quint64 m_bytes = 0;
};

} // namespace

SecureDeleteThread::SecureDeleteThread(SecureDeleteJob job, core::ProgressRelay &relay)
    : m_job(std::move(job)),
      m_relay(relay)
{
    connect(this, &WorkerThread::done, this, &SecureDeleteThread::deleteFinish);
}

void SecureDeleteThread::work()
{
    const auto passes = static_cast<quint64>(passCount(m_job.options.method, m_job.options.randomPasses));
    m_relay.setTotalBytes(m_job.bytes * passes);
    emit updateTotalProgress(totalSteps(m_job.rows.size()));
    Win32Disk disk;
    Listener listener(m_relay);
    QList<int> destroyed;
    listener.onStep = [this] { deliver([this] { emit updateDeleteProgress(); }); };
    listener.onDestroyed = [&](int row) {
        destroyed.append(row);
        if (m_job.mode == SecureDeleteJob::Mode::Items)
            deliver([this, row] { emit rowDestroyed(row); });
    };
    m_result = shredRows(m_job.rows, m_job.options, disk, processBuffers(), listener, cancelFlag());
    if (m_job.mode == SecureDeleteJob::Mode::RecycleBin) {
        listener.onStep = {};
        listener.onDestroyed = {};
        nameByFormerPaths();
        destroyIndexes(disk, listener, destroyed);
        platform::refreshRecycleBinIcon();
    }
}

void SecureDeleteThread::nameByFormerPaths()
{
    for (ShredRecord &record : m_result.records) {
        for (qsizetype cut = record.path.size(); cut > 0; cut = record.path.lastIndexOf(u'\\', cut - 1)) {
            const auto shown = m_job.shownPaths.constFind(record.path.left(cut));
            if (shown == m_job.shownPaths.constEnd())
                continue;
            record.path = *shown + record.path.mid(cut);
            break;
        }
    }
}

// Destroys the index files of the items that were destroyed, also after a cancel. Items that were left keep
// theirs.
void SecureDeleteThread::destroyIndexes(Disk &disk, ShredListener &listener, const QList<int> &destroyed)
{
    std::vector<ShredRow> indexes;
    for (const int row : destroyed) {
        if (const auto &index = m_job.indexes[static_cast<std::size_t>(row)])
            indexes.push_back(*index);
    }
    const core::CancelFlag never;
    ShredResult result = shredRows(indexes, m_job.options, disk, processBuffers(), listener, never);
    for (ShredRecord &record : result.records) {
        if (!record.destroyed)
            m_result.records.push_back(std::move(record));
    }
}
