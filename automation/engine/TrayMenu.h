// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

// What the menu of the tray icon offers.
namespace automation
{

struct SettingsPage {
    const wchar_t *title;
    const wchar_t *address;
};
// Addresses as Microsoft documents them, in the order of Windows' own settings.
inline constexpr std::array settingsPages{
    SettingsPage{L"&Display", L"ms-settings:display"},
    SettingsPage{L"&Sound", L"ms-settings:sound"},
    SettingsPage{L"&Notifications", L"ms-settings:notifications"},
    SettingsPage{L"&Power and sleep", L"ms-settings:powersleep"},
    SettingsPage{L"S&torage", L"ms-settings:storagesense"},
    SettingsPage{L"&Bluetooth and devices", L"ms-settings:bluetooth"},
    SettingsPage{L"N&etwork and Internet", L"ms-settings:network"},
    SettingsPage{L"Perso&nalization", L"ms-settings:personalization"},
    SettingsPage{L"&Taskbar", L"ms-settings:taskbar"},
    SettingsPage{L"&Apps", L"ms-settings:appsfeatures"},
    SettingsPage{L"&Date and time", L"ms-settings:dateandtime"},
    SettingsPage{L"Windows &Update", L"ms-settings:windowsupdate"},
};

struct SuiteModule {
    int id; // of the module table
    const wchar_t *title;
};
inline constexpr std::array suiteModules{
    SuiteModule{2, L"Folder Size Analyzer"},  SuiteModule{3, L"Find Duplicate"},
    SuiteModule{20, L"Find Duplicate Image"}, SuiteModule{15, L"Bulk Image Converter"},
    SuiteModule{6, L"Track Cleaner"},         SuiteModule{4, L"Secure Delete"},
    SuiteModule{5, L"System Information"},    SuiteModule{13, L"Shortcut Keys"},
    SuiteModule{19, L"Stay Awake"},           SuiteModule{0, L"Auto Dark Mode"},
};

} // namespace automation
