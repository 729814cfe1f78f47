// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

namespace platform
{

// RegisterPowerSettingNotification
struct PowerNoticeTraits {
    using Raw = HPOWERNOTIFY;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { UnregisterPowerSettingNotification(raw); }
};
using PowerNotice = UniqueHandle<PowerNoticeTraits>;

// RegisterWaitForSingleObject. Closing waits for a running callback.
struct WaitTraits {
    using Raw = HANDLE;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { UnregisterWaitEx(raw, INVALID_HANDLE_VALUE); }
};
using WaitHandle = UniqueHandle<WaitTraits>;

} // namespace platform
