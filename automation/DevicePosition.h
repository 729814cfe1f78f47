// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Sun.h"
#include "core/CancelFlag.h"

#include <functional>

namespace automation
{

// What Windows says about where this computer is.
struct DevicePosition {
    enum class Failure { None, NotAllowed, NotKnown };

    std::optional<Position> position;
    Failure failure = Failure::None;
};

using AskForPosition = std::function<DevicePosition(const core::CancelFlag &)>;

// Asks Windows, which may ask the user first: for that it waits as long as it takes, for the answer half a
// minute. On a thread of its own.
DevicePosition askWindowsForPosition(const core::CancelFlag &cancel);

} // namespace automation
