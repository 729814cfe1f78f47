// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/PriorityStart.h"
#include "core/CancelFlag.h"

namespace automation
{

// Checks whether a program that is started after construction runs as its shortcut specifies.
class ShortcutTest
{
public:
    explicit ShortcutTest(PriorityStart start);

    struct Result {
        bool asWanted = false;
        QString text; // for display
    };
    // Waits for up to a few seconds. Any thread.
    Result await(const core::CancelFlag &cancel) const;

private:
    PriorityStart m_start;
    quint64 m_began; // FILETIME
};

} // namespace automation
