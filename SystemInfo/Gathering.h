// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/MachineFactory.h"
#include "SystemInfo/engine/Pages.h"
#include "platform/AbandonableTask.h"

#include <chrono>
#include <functional>
#include <memory>

namespace systeminfo
{

// How long a page waits for Windows before it shows what it has and reports the rest as missing.
inline constexpr std::chrono::milliseconds answerLimit{30'000};

// Gathers a page on a thread of its own. Its calls wait for WMI, drivers and networks, some of them forever,
// and cannot be interrupted. So the caller stops waiting when cancelled or after the limit, and abandons the
// thread with everything it holds. The thread is never terminated; a late result is discarded.
class Gathering
{
public:
    // Starts at once, unless too many abandoned threads still hang in Windows: then wait() starts it as soon
    // as one of them returns.
    Gathering(PageId id, const MachineFactory &factory);
    // Requests a stop and does not wait for it.
    ~Gathering();
    Gathering(Gathering &&) noexcept;

    // Returns the page, complete or as far as it has come; with a notice if the limit passed or gathering
    // failed.
    Page wait(const core::CancelFlag &cancel, std::chrono::milliseconds limit = answerLimit);

private:
    struct Shared;

    void start();

    std::shared_ptr<Shared> m_shared;
    std::function<void()> m_gather; // empty once it has been started
    platform::AbandonableTask m_task;
};

} // namespace systeminfo
