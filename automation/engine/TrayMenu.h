// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

// The contents of the tray icon's menu.
namespace automation
{

struct SettingsPage {
    const wchar_t *title;
    const wchar_t *address;
};
// ms-settings addresses as documented by Microsoft, in the order of Windows' settings.
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
    int id; // id in the module table
    const wchar_t *title;
};
// All pages of the suite except this icon's own, in the order of the home page.
inline constexpr std::array suiteModules{
    SuiteModule{0, L"Auto &Dark Mode"},
    SuiteModule{1, L"Auto &Wallpaper Changer"},
    SuiteModule{15, L"&Bulk Image Converter"},
    SuiteModule{2, L"&Folder Size Analyzer"},
    SuiteModule{3, L"Fi&nd Duplicate"},
    SuiteModule{20, L"Find Duplicate I&mage"},
    SuiteModule{16, L"&QR Code Creator"},
    SuiteModule{4, L"Secure D&elete"},
    SuiteModule{13, L"Shortcut &Keys"},
    SuiteModule{10, L"Smart S&hortcut"},
    SuiteModule{19, L"Stay &Awake"},
    SuiteModule{5, L"S&ystem Information"},
    SuiteModule{6, L"Track &Cleaner"},
    SuiteModule{7, L"Trans&parent Taskbar"},
    SuiteModule{8, L"T&roubleshooter"},
    SuiteModule{18, L"Windows Icon E&xtractor"},
    SuiteModule{17, L"Windows Icon &Generator"},
};

} // namespace automation
