// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/MachineFactory.h"
#include "SystemInfo/engine/Pages.h"

#include <chrono>
#include <memory>

namespace systeminfo
{

// How long a page waits for Windows before it shows what has come and says that the rest is missing.
inline constexpr std::chrono::milliseconds answerLimit{30'000};

// Gathers a page on a thread of its own. The calls of a page wait in WMI, in drivers and on networks, some
// for ever, and nothing ends them from outside: whoever waits here gives up when told to or after the limit,
// and the thread is left behind with what it holds. It is never terminated; its late answer is dropped.
class Gathering
{
public:
    // Begins at once.
    Gathering(PageId id, const MachineFactory &factory);
    // Asks for an end, and does not wait for it.
    ~Gathering();
    Gathering(Gathering &&) noexcept;

    // The page, or what there is of it; with a notice when the limit passed or the gathering failed.
    Page wait(const core::CancelFlag &cancel, std::chrono::milliseconds limit = answerLimit);

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
};

} // namespace systeminfo
