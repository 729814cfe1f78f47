// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/EventSource.h"

#include <QStringView>

#include <initguid.h>
#include <time.h>
#include <wtsapi32.h>

using automation::EventKind;

namespace agent
{

namespace
{

std::optional<automation::Event> powerEvent(WPARAM what, LPARAM details)
{
    if (what == PBT_APMRESUMEAUTOMATIC)
        return eventNow(EventKind::Resume);
    if (what != PBT_POWERSETTINGCHANGE || !details)
        return {};
    const auto *setting = reinterpret_cast<const POWERBROADCAST_SETTING *>(details);
    if (setting->PowerSetting == GUID_LIDSWITCH_STATE_CHANGE)
        return eventNow(EventKind::Lid, setting->Data[0] != 0);
    if (setting->PowerSetting == GUID_BATTERY_PERCENTAGE_REMAINING ||
        setting->PowerSetting == GUID_ACDC_POWER_SOURCE) {
        SYSTEM_POWER_STATUS status = {};
        const bool onBattery =
            GetSystemPowerStatus(&status) && status.ACLineStatus == 0 && status.BatteryLifePercent <= 100;
        return eventNow(EventKind::Battery, onBattery ? status.BatteryLifePercent : -1);
    }
    return {};
}

} // namespace

automation::Event eventNow(EventKind kind, int value)
{
    return {kind, QDateTime::currentDateTime(), static_cast<qint64>(GetTickCount64()), value};
}

std::optional<automation::Event> eventOf(UINT message, WPARAM wParam, LPARAM lParam)
{
    static const UINT taskbarCreated = RegisterWindowMessageW(L"TaskbarCreated");
    switch (message) {
    case WM_POWERBROADCAST:
        return powerEvent(wParam, lParam);
    case WM_TIMECHANGE:
        _tzset(); // the time zone may have changed
        return eventNow(EventKind::ClockChange);
    case WM_DISPLAYCHANGE:
        return eventNow(EventKind::Displays);
    case WM_WTSSESSION_CHANGE:
        if (wParam == WTS_SESSION_UNLOCK || wParam == WTS_CONSOLE_CONNECT || wParam == WTS_REMOTE_CONNECT)
            return eventNow(EventKind::Session);
        return {};
    case WM_SETTINGCHANGE:
        if (lParam && QStringView(reinterpret_cast<const wchar_t *>(lParam)) == u"ImmersiveColorSet")
            return eventNow(EventKind::ThemeChanged);
        return {};
    default:
        if (message == taskbarCreated)
            return eventNow(EventKind::TaskbarMade);
        return {};
    }
}

} // namespace agent
