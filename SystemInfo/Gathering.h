// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/MachineFactory.h"
#include "SystemInfo/engine/Pages.h"

#include <chrono>
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
    // Starts at once.
    Gathering(PageId id, const MachineFactory &factory);
    // Requests a stop and does not wait for it.
    ~Gathering();
    Gathering(Gathering &&) noexcept;

    // Returns the page, complete or as far as it has come; with a notice if the limit passed or gathering
    // failed.
    Page wait(const core::CancelFlag &cancel, std::chrono::milliseconds limit = answerLimit);

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
};

} // namespace systeminfo
