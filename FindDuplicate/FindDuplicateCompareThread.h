// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/ContentComparison.h"
#include "core/WorkerThread.h"
#include "platform/InterruptibleCalls.h"

#include <QStringList>

#include <atomic>

// Compares file contents byte by byte.
class FindDuplicateCompareThread : public core::WorkerThread
{
    Q_OBJECT

public:
    // `fileSize` is the size found by the scan.
    FindDuplicateCompareThread(QStringList paths, quint64 fileSize);

    // Progress from 0 to 1000; any thread.
    int permille() const noexcept { return m_permille.load(std::memory_order_relaxed); }
    // After compareFinish(), one per path; empty if it failed.
    std::vector<duplicates::ContentState> takeStates() { return std::move(m_states); }

signals:
    void compareFinish(); // once, also after a cancel; on the thread that this object lives in

protected:
    void work() override;
    void interrupt() override { m_calls.interrupt(); }

private:
    platform::InterruptibleCalls m_calls;
    QStringList m_paths;
    quint64 m_fileSize;
    std::vector<duplicates::ContentState> m_states;
    std::atomic_int m_permille{0};
};
