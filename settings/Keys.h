// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

// All registry keys of the settings, below HKEY_CURRENT_USER. They are the stored format, shared with old
// installations: neither they nor the value names in the modules' headers may be "corrected".
namespace settings::keys
{

inline constexpr QStringView root = u"Software\\Fernlight Larkspur";
inline constexpr QStringView autoDarkMode = u"Software\\Fernlight Larkspur\\AutoDarkMode";
inline constexpr QStringView wallpaperChanger = u"Software\\Fernlight Larkspur\\WallpaperChanger";
inline constexpr QStringView hotKey = u"Software\\Fernlight Larkspur\\HotKey";
inline constexpr QStringView stayAwake = u"Software\\Fernlight Larkspur\\StayAwake";
inline constexpr QStringView glasswick = u"Software\\Fernlight Larkspur\\Glasswick";
inline constexpr QStringView convertImage = u"Software\\Fernlight Larkspur\\ConvertImage";
inline constexpr QStringView extractIcon = u"Software\\Fernlight Larkspur\\ExtractIcon";
inline constexpr QStringView qrCodeGen = u"Software\\Fernlight Larkspur\\QRCodeGen";
inline constexpr QStringView trackCleaner = u"Software\\Fernlight Larkspur\\TrackCleaner";
inline constexpr QStringView troubleshooter = u"Software\\Fernlight Larkspur\\Troubleshooter";
inline constexpr QStringView smartShortcut = u"Software\\Fernlight Larkspur\\SmartShortcut";

// The folder-size family keeps the paths of the time before the suite.
inline constexpr QStringView findDuplicate = u"Software\\Fernlight\\Folder Size Analyzer\\Find Duplicate";
inline constexpr QStringView secureDelete = u"Software\\Fernlight\\Folder Size Analyzer\\Secure Delete";
inline constexpr QStringView folderSizeAnalyzer = u"Software\\Folder Size Analyzer";

// A predecessor product; its settings are only read, to be taken over.
inline constexpr QStringView wakeward = u"Software\\Fernlight\\Wakeward";

// Windows' own key with the user's environment variables, where OneDrive stores its folder.
inline constexpr QStringView environment = u"Environment";

} // namespace settings::keys
