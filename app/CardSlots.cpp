// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CardSlots.h"

#include "app/HomeForm.h"

#include <algorithm>
#include <array>

namespace
{

#define ROW(id, card, star)                                                                                  \
    CardSlots                                                                                                \
    {                                                                                                        \
        id, #card, #star, &HomeForm::on_##card##_clicked, &HomeForm::on_##star##_clicked                     \
    }

constexpr std::array rows{
    ROW(0, AutoDarkModeLabel, AutoDarkModeStarButton),
    ROW(1, AutoWallpaperChanger, AutoWallpaperChangerStarButton),
    ROW(15, ConvertImage, ImageConvertStarButton),
    ROW(2, FolderSizeAnalyzer, FolderSizeAnalyzerStarButton),
    ROW(3, FindDuplicate, FindDuplicateStarButton),
    ROW(20, FindDuplicateImage, FindDuplicateImageStarButton),
    ROW(12, MyTrayIcon, MyTrayIconStarButton),
    ROW(11, ProcessManager, ProcessManagerStarButton),
    ROW(16, QRCodeCreator, QRCodeStarButton),
    ROW(14, Regwick, RegwickStarButton),
    ROW(4, SecureDelete, SecureDeleteStarButton),
    ROW(13, Hotkey, HotkeyStarButton),
    ROW(10, SmartShortcut, SmartShortcutStarButton),
    ROW(19, StayAwake, StayAwakeStarButton),
    ROW(5, SystemInformation, SystemInformationStarButton),
    ROW(6, TrackCleaner, TrackCleanerStarButton),
    ROW(7, TransparentTaskbar, TransparentTaskbarStarButton),
    ROW(8, Troubleshooter, TroubleshooterStarButton),
    ROW(9, LarkspurSettings, LarkspurSettingsStarButton),
    ROW(18, WinIconExtractor, WinIconExtractorStarButton),
    ROW(17, WinIconGenerator, WinIconGeneratorStarButton),
};

#undef ROW

} // namespace

const CardSlots *cardSlots(int id)
{
    const auto found = std::ranges::find(rows, id, &CardSlots::id);
    return found == rows.end() ? nullptr : &*found;
}
