// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Sun.h"
#include "core/CancelFlag.h"

#include <functional>

namespace automation
{

// The position of this computer as reported by Windows.
struct DevicePosition {
    enum class Failure { None, NotAllowed, NotKnown };

    std::optional<Position> position;
    Failure failure = Failure::None;
};

using AskForPosition = std::function<DevicePosition(const core::CancelFlag &)>;

// Queries Windows, which may ask the user for permission: that dialog may take any time, the position itself
// half a minute. Call on a worker thread.
DevicePosition askWindowsForPosition(const core::CancelFlag &cancel);

} // namespace automation
