// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ScanProgress.h"
#include "core/WorkerThread.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace core
{

// What a job's function receives. All members may be used from any thread.
struct JobControl {
    const CancelFlag &cancel;
    ProgressRelay &progress;
};

// A worker that calls one function, result = work(const JobControl &), and stores the return value.
// `interrupt` may be empty; see WorkerThread::interrupt().
template <class Work>
class FunctionJob : public WorkerThread
{
public:
    using Result = std::invoke_result_t<Work &, const JobControl &>;

    FunctionJob(Work work, ProgressRelay &progress, std::function<void()> interrupt = {})
        : m_work(std::move(work)),
          m_progress(progress),
          m_interrupt(std::move(interrupt))
    {
    }

    // After done(): nullopt if the function threw, see error(). If the job was stopped, whatever the function
    // returned.
    std::optional<Result> takeResult() { return std::exchange(m_result, std::nullopt); }

protected:
    void work() override { m_result.emplace(m_work(JobControl{cancelFlag(), m_progress})); }
    void interrupt() override
    {
        if (m_interrupt)
            m_interrupt();
    }

private:
    Work m_work;
    ProgressRelay &m_progress;
    std::function<void()> m_interrupt;
    std::optional<Result> m_result;
};

} // namespace core
