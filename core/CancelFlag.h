// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace core
{

// A request to stop a job. Set from any thread, tested by the worker between items; a cancelled job still
// ends through its normal finish signal. One flag serves one job and is not reset while that job runs.
class CancelFlag
{
public:
    CancelFlag() = default;
    CancelFlag(const CancelFlag &) = delete;
    CancelFlag &operator=(const CancelFlag &) = delete;

    void set() noexcept { m_set.store(true, std::memory_order_relaxed); }
    void reset() noexcept { m_set.store(false, std::memory_order_relaxed); }
    bool isSet() const noexcept { return m_set.load(std::memory_order_relaxed); }

private:
    std::atomic_bool m_set{false};
};

} // namespace core
