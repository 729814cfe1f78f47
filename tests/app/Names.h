// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The names by which other executables of the suite, stored settings and automation know the shell's parts.
// They are a contract: a change here breaks somebody.
namespace names
{

struct Module {
    int id;
    const char *button;               // names the window's slot too, on_BUTTON_clicked()
    const char *panelText = nullptr;  // null: not in the side panel
    const char *executable = nullptr; // null: a page
};
inline constexpr Module modules[] = {
    {0, "autoDarkButton", "Auto Dark Mode"},
    {1, "autoWallpaperChangerButton", "Auto \nWallpaper Changer"},
    {2, "diskUsageButton", "Folder Size Analyzer"},
    {3, "findDuplicateButton", "Find Duplicate"},
    {4, "secureDeleteButton", "Secure Delete"},
    {5, "systemInfoButton", "System Information"},
    {6, "trackCleanerButton", "Track Cleaner"},
    {7, "transparentTaskbarButton", "Transparent Taskbar"},
    {8, "troubleshooterButton", "Troubleshooter"},
    {9, "larkspurButton", "Larkspur Settings", "\\LarkspurSettings.exe"},
    {10, "smartShortcutButton", "Smart Shortcut"},
    {11, "processManagerButton", "Process Manager", "\\Taskwick.exe"},
    {12, "myTrayIconButton", "My Tray Icon"},
    {13, "hotkeyButton", "Shortcut Keys"},
    {14, "regwickButton", "Registry Cleaner", "\\Regwick.exe"},
    {15, "convertImageButton"},
    {16, "qrCodeGenButton"},
    {17, "winIconGeneratorButton"},
    {18, "winIconExtractorButton"},
    {19, "stayAwakeButton"},
    {20, "findDuplicateImageButton", "Find Duplicate Image"},
};

struct Card {
    int id;
    const char *title;
    const char *description;
    const char *openSlot;
    const char *starSlot;
};
inline constexpr Card cards[] = {
    {0, "Auto Dark Mode", "Automatically change app and system theme mode to light or dark",
     "on_AutoDarkModeLabel_clicked", "on_AutoDarkModeStarButton_clicked"},
    {1, "Auto Wallpaper Changer",
     "Updates your background every day or hour with beautiful images from Bing or NASA",
     "on_AutoWallpaperChanger_clicked", "on_AutoWallpaperChangerStarButton_clicked"},
    {15, "Bulk Image Converter",
     "Quickly convert multiple images to another format (jpg, png, heic, tiff, or webp).",
     "on_ConvertImage_clicked", "on_ImageConvertStarButton_clicked"},
    {2, "Folder Size Analyzer", "Figure out which files or folders who taking up your hard drive space",
     "on_FolderSizeAnalyzer_clicked", "on_FolderSizeAnalyzerStarButton_clicked"},
    {3, "Find Duplicate", "Find and remove duplicate files", "on_FindDuplicate_clicked",
     "on_FindDuplicateStarButton_clicked"},
    {20, "Find Duplicate Image", "Find and remove duplicate image files", "on_FindDuplicateImage_clicked",
     "on_FindDuplicateImageStarButton_clicked"},
    {12, "My Tray Icon", "Special tray icon that helps you quickly access Windows settings",
     "on_MyTrayIcon_clicked", "on_MyTrayIconStarButton_clicked"},
    {11, "Process Manager",
     "View detail information about all running processes and change priority level for specified process",
     "on_ProcessManager_clicked", "on_ProcessManagerStarButton_clicked"},
    {16, "QR Code Creator", "Create QR Code for text, link, email, Whatsapp, SMS, Call, Wifi.",
     "on_QRCodeCreator_clicked", "on_QRCodeStarButton_clicked"},
    {14, "Registry Cleaner", "Safely clean unused items from Windows Registry", "on_Regwick_clicked",
     "on_RegwickStarButton_clicked"},
    {4, "Secure Delete", "Completely and securely delete sensitive file from your hard drive",
     "on_SecureDelete_clicked", "on_SecureDeleteStarButton_clicked"},
    {13, "Shortcut Keys", "Create keyboard shortcuts for quickly opening apps, folder, or websites",
     "on_Hotkey_clicked", "on_HotkeyStarButton_clicked"},
    {10, "Smart Shortcut", "Automatically specified priority level for your favourite apps",
     "on_SmartShortcut_clicked", "on_SmartShortcutStarButton_clicked"},
    {19, "Stay Awake",
     "Keep your PC awake and simulate click to prevent screensaver from starting and avoid app to change "
     "your status or availability.",
     "on_StayAwake_clicked", "on_StayAwakeStarButton_clicked"},
    {5, "System Information", "Show detail information about your system", "on_SystemInformation_clicked",
     "on_SystemInformationStarButton_clicked"},
    {6, "Track Cleaner", "Protect your privacy by eliminating traces of your digital activities",
     "on_TrackCleaner_clicked", "on_TrackCleanerStarButton_clicked"},
    {7, "Transparent Taskbar", "Make your Windows Taskbar completely transparent",
     "on_TransparentTaskbar_clicked", "on_TransparentTaskbarStarButton_clicked"},
    {8, "Troubleshooter", "Fix problem with Internet connection, icon, thumbnail, and Microsoft Store",
     "on_Troubleshooter_clicked", "on_TroubleshooterStarButton_clicked"},
    {9, "Larkspur Settings", "Safely and easily explore Windows hidden settings",
     "on_LarkspurSettings_clicked", "on_LarkspurSettingsStarButton_clicked"},
    {18, "Windows Icon Extractor", "Extract Icons from Windows libraries and exe files.",
     "on_WinIconExtractor_clicked", "on_WinIconExtractorStarButton_clicked"},
    {17, "Windows Icon Generator", "Create Windows icon from any PNG or JPG image.",
     "on_WinIconGenerator_clicked", "on_WinIconGeneratorStarButton_clicked"},
};

// Top to bottom; the duplicate image finder stands behind the duplicate finder in addition.
struct PanelRow {
    const char *button;
    const char *image = nullptr;
};
inline constexpr PanelRow panel[] = {
    {"HomeButton", "Home48"},
    {"autoDarkButton", "AutoDark48"},
    {"autoWallpaperChangerButton", "WallpaperChanger48"},
    {"diskUsageButton", "folder_size_analyzer_48x48"},
    {"findDuplicateButton", "FileDuplicate48"},
    {"myTrayIconButton", "MyTrayIcon48"},
    {"processManagerButton", "ProcessManager48"},
    {"regwickButton", "Regwick48"},
    {"secureDeleteButton", "SecureDelete48"},
    {"hotkeyButton", "Keyboard48"},
    {"smartShortcutButton", "SmartShortcut48"},
    {"systemInfoButton", "computing48"},
    {"trackCleanerButton", "track_cleaner_48x48"},
    {"transparentTaskbarButton", "Glasswick48"},
    {"troubleshooterButton"},
    {"larkspurButton"},
};

// Beside those of the modules.
inline constexpr const char *windowSlots[] = {"on_miscToolsButton_clicked()",
                                              "on_HomeButton_clicked()",
                                              "OnAbout(bool)",
                                              "OnUpdate(bool)",
                                              "OnExitApp()",
                                              "OnCloseApp()",
                                              "onOpenModule(int)",
                                              "OnShowToolbarSignal(bool)",
                                              "enableSaveButton()",
                                              "disableSaveButton()"};

} // namespace names
