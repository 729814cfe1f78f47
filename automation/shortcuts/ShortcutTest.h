// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/PriorityStart.h"
#include "core/CancelFlag.h"

namespace automation
{

// Whether a program that is started from now on runs as its shortcut asks for.
class ShortcutTest
{
public:
    explicit ShortcutTest(PriorityStart start);

    struct Result {
        bool asWanted = false;
        QString text; // for the user
    };
    // Waits for a few seconds. Any thread.
    Result await(const core::CancelFlag &cancel) const;

private:
    PriorityStart m_start;
    quint64 m_began; // FILETIME
};

} // namespace automation
