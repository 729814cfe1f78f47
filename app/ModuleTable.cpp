// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ModuleTable.h"

#include "ConvertImage/ConvertImageForm.h"
#include "DiskUsage/DiskUsageForm.h"
#include "ExtractIcon/ExtractIconForm.h"
#include "ExtractIcon/Image2IcoForm.h"
#include "FindDuplicate/FindDuplicateForm.h"
#include "FindDuplicateImage/FindDuplicateImageForm.h"
#include "QRCode/QrCodeGenForm.h"
#include "SecureDelete/SecureDeleteForm.h"
#include "SystemInfo/SystemInfoForm.h"
#include "TrackCleaner/TrackCleanerForm.h"
#include "Troubleshooter/TroubleshooterForm.h"
#include "automation/AutoDarkModeForm.h"
#include "automation/AutoWallpaperChangerForm.h"
#include "automation/HotkeyForm.h"
#include "automation/MyTrayIconForm.h"
#include "automation/StayAwakeForm.h"
#include "automation/TransparentTaskbarModuleForm.h"
#include "automation/shortcuts/SmartShortcutForm.h"
#include "widgets/FLWidget.h"

#include <algorithm>

namespace
{

template <class Form>
FLWidget *create(QWidget *parent)
{
    return new Form(parent);
}

constexpr auto launcher = Module::Kind::Launcher;

#define IMAGE(name) ":/resources/images/" name ".png"

} // namespace

// The texts are product wording and must not be changed.
ModuleTable ModuleTable::suite()
{
    return ModuleTable({
        {.id = 0,
         .cardTitle = QT_TR_NOOP("Auto Dark Mode"),
         .cardName = "AutoDarkModeLabel",
         .starName = "AutoDarkModeStarButton",
         .description = QT_TR_NOOP("Automatically change app and system theme mode to light or dark"),
         .icon = IMAGE("AutoDark48"),
         .buttonName = "autoDarkButton",
         .panelText = QT_TR_NOOP("Auto Dark Mode"),
         .panelOrder = 1,
         .create = create<AutoDarkModeForm>,
         .homeLog = "autoDarkMode"},
        {.id = 1,
         .cardTitle = QT_TR_NOOP("Auto Wallpaper Changer"),
         .cardName = "AutoWallpaperChanger",
         .starName = "AutoWallpaperChangerStarButton",
         .description =
             QT_TR_NOOP("Updates your background every day or hour with beautiful images from Bing or NASA"),
         .icon = IMAGE("WallpaperChanger48"),
         .buttonName = "autoWallpaperChangerButton",
         .panelText = QT_TR_NOOP("Auto \nWallpaper Changer"),
         .panelOrder = 2,
         .create = create<AutoWallpaperChangerForm>,
         .closeOrder = 5,
         .homeLog = "autoWallpaperChanger"},
        {.id = 15,
         .cardTitle = QT_TR_NOOP("Bulk Image Converter"),
         .cardName = "ConvertImage",
         .starName = "ImageConvertStarButton",
         .description =
             QT_TR_NOOP("Quickly convert multiple images to another format (jpg, png, heic, tiff, or webp)."),
         .icon = IMAGE("ConvertImage48"),
         .create = create<ConvertImageForm>,
         .closeOrder = 7},
        {.id = 2,
         .cardTitle = QT_TR_NOOP("Folder Size Analyzer"),
         .cardName = "FolderSizeAnalyzer",
         .starName = "FolderSizeAnalyzerStarButton",
         .description = QT_TR_NOOP("Figure out which files or folders who taking up your hard drive space"),
         .icon = IMAGE("folder_size_analyzer_48x48"),
         .buttonName = "diskUsageButton",
         .panelText = QT_TR_NOOP("Folder Size Analyzer"),
         .panelOrder = 3,
         .create = create<DiskUsageForm>,
         .closeOrder = 1},
        {.id = 3,
         .cardTitle = QT_TR_NOOP("Find Duplicate"),
         .cardName = "FindDuplicate",
         .starName = "FindDuplicateStarButton",
         .description = QT_TR_NOOP("Find and remove duplicate files"),
         .icon = IMAGE("FileDuplicate48"),
         .buttonName = "findDuplicateButton",
         .panelText = QT_TR_NOOP("Find Duplicate"),
         .panelOrder = 4,
         .create = create<FindDuplicateForm>,
         .closeOrder = 3},
        {.id = 20,
         .cardTitle = QT_TR_NOOP("Find Duplicate Image"),
         .cardName = "FindDuplicateImage",
         .starName = "FindDuplicateImageStarButton",
         .description = QT_TR_NOOP("Find and remove duplicate image files"),
         .icon = IMAGE("FindDuplicateImage48"),
         .buttonName = "findDuplicateImageButton",
         .panelText = QT_TR_NOOP("Find Duplicate Image"),
         .panelOrder = 5,
         .create = create<FindDuplicateImageForm>,
         .closeOrder = 4,
         .atStart = FindDuplicateImageForm::clearLeftovers},
        {.id = 12,
         .cardTitle = QT_TR_NOOP("My Tray Icon"),
         .cardName = "MyTrayIcon",
         .starName = "MyTrayIconStarButton",
         .description = QT_TR_NOOP("Special tray icon that helps you quickly access Windows settings"),
         .icon = IMAGE("MyTrayIcon48"),
         .buttonName = "myTrayIconButton",
         .panelText = QT_TR_NOOP("My Tray Icon"),
         .panelOrder = 6,
         .create = create<MyTrayIconForm>},
        {.id = 11,
         .cardTitle = QT_TR_NOOP("Process Manager"),
         .cardName = "ProcessManager",
         .starName = "ProcessManagerStarButton",
         .description =
             QT_TR_NOOP("View detail information about all running processes and change priority level "
                        "for specified process"),
         .icon = IMAGE("ProcessManager48"),
         .kind = launcher,
         .buttonName = "processManagerButton",
         .panelText = QT_TR_NOOP("Process Manager"),
         .panelOrder = 7,
         .executable = "\\Taskwick.exe",
         .displayName = "Process Manager"},
        {.id = 16,
         .cardTitle = QT_TR_NOOP("QR Code Creator"),
         .cardName = "QRCodeCreator",
         .starName = "QRCodeStarButton",
         .description = QT_TR_NOOP("Create QR Code for text, link, email, Whatsapp, SMS, Call, Wifi."),
         .icon = IMAGE("QRCode48"),
         .create = create<QrCodeGenForm>,
         .closeOrder = 8},
        {.id = 14,
         .cardTitle = QT_TR_NOOP("Registry Cleaner"),
         .cardName = "Regwick",
         .starName = "RegwickStarButton",
         .description = QT_TR_NOOP("Safely clean unused items from Windows Registry"),
         .icon = IMAGE("Regwick48"),
         .kind = launcher,
         .buttonName = "regwickButton",
         .panelText = QT_TR_NOOP("Registry Cleaner"),
         .panelOrder = 8,
         .executable = "\\Regwick.exe",
         .displayName = "Registry Cleaner"},
        {.id = 4,
         .cardTitle = QT_TR_NOOP("Secure Delete"),
         .cardName = "SecureDelete",
         .starName = "SecureDeleteStarButton",
         .description = QT_TR_NOOP("Completely and securely delete sensitive file from your hard drive"),
         .icon = IMAGE("SecureDelete48"),
         .buttonName = "secureDeleteButton",
         .panelText = QT_TR_NOOP("Secure Delete"),
         .panelOrder = 9,
         .create = create<SecureDeleteForm>,
         .closeOrder = 2},
        {.id = 13,
         .cardTitle = QT_TR_NOOP("Shortcut Keys"),
         .cardName = "Hotkey",
         .starName = "HotkeyStarButton",
         .description = QT_TR_NOOP("Create keyboard shortcuts for quickly opening apps, folder, or websites"),
         .icon = IMAGE("Keyboard48"),
         .buttonName = "hotkeyButton",
         .panelText = QT_TR_NOOP("Shortcut Keys"),
         .panelOrder = 10,
         .create = create<HotkeyForm>},
        {.id = 10,
         .cardTitle = QT_TR_NOOP("Smart Shortcut"),
         .cardName = "SmartShortcut",
         .starName = "SmartShortcutStarButton",
         .description = QT_TR_NOOP("Automatically specified priority level for your favourite apps"),
         .icon = IMAGE("SmartShortcut48"),
         .buttonName = "smartShortcutButton",
         .panelText = QT_TR_NOOP("Smart Shortcut"),
         .panelOrder = 11,
         .create = create<SmartShortcutForm>},
        {.id = 19,
         .cardTitle = QT_TR_NOOP("Stay Awake"),
         .cardName = "StayAwake",
         .starName = "StayAwakeStarButton",
         .description =
             QT_TR_NOOP("Keep your PC awake and simulate click to prevent screensaver from starting and "
                        "avoid app to change your status or availability."),
         .icon = IMAGE("StayAwake48"),
         .create = create<StayAwakeForm>,
         .shellEvents = {ShellEvent::StayAwakeState}},
        {.id = 5,
         .cardTitle = QT_TR_NOOP("System Information"),
         .cardName = "SystemInformation",
         .starName = "SystemInformationStarButton",
         .description = QT_TR_NOOP("Show detail information about your system"),
         .icon = IMAGE("computing48"),
         .buttonName = "systemInfoButton",
         .panelText = QT_TR_NOOP("System Information"),
         .panelOrder = 12,
         .create = create<SystemInfoForm>},
        {.id = 6,
         .cardTitle = QT_TR_NOOP("Track Cleaner"),
         .cardName = "TrackCleaner",
         .starName = "TrackCleanerStarButton",
         .description = QT_TR_NOOP("Protect your privacy by eliminating traces of your digital activities"),
         .icon = IMAGE("track_cleaner_48x48"),
         .buttonName = "trackCleanerButton",
         .panelText = QT_TR_NOOP("Track Cleaner"),
         .panelOrder = 13,
         .create = create<TrackCleanerForm>,
         .closeOrder = 6},
        {.id = 7,
         .cardTitle = QT_TR_NOOP("Transparent Taskbar"),
         .cardName = "TransparentTaskbar",
         .starName = "TransparentTaskbarStarButton",
         .description = QT_TR_NOOP("Make your Windows Taskbar completely transparent"),
         .icon = IMAGE("Glasswick48"),
         .buttonName = "transparentTaskbarButton",
         .panelText = QT_TR_NOOP("Transparent Taskbar"),
         .panelOrder = 14,
         .create = create<TransparentTaskbarModuleForm>},
        {.id = 8,
         .cardTitle = QT_TR_NOOP("Troubleshooter"),
         .cardName = "Troubleshooter",
         .starName = "TroubleshooterStarButton",
         .description =
             QT_TR_NOOP("Fix problem with Internet connection, icon, thumbnail, and Microsoft Store"),
         .icon = IMAGE("Troubleshooter48"),
         .buttonName = "troubleshooterButton",
         .panelText = QT_TR_NOOP("Troubleshooter"),
         .panelOrder = 15,
         .create = create<TroubleshooterForm>,
         .closeOrder = 10,
         .atStart = TroubleshooterForm::finishInterruptedRepair},
        {.id = 9,
         .cardTitle = QT_TR_NOOP("Larkspur Settings"),
         .cardName = "LarkspurSettings",
         .starName = "LarkspurSettingsStarButton",
         .description = QT_TR_NOOP("Safely and easily explore Windows hidden settings"),
         .icon = IMAGE("LarkspurSettings48"),
         .kind = launcher,
         .buttonName = "larkspurButton",
         .panelText = QT_TR_NOOP("Larkspur Settings"),
         .panelOrder = 16,
         .executable = "\\LarkspurSettings.exe",
         .displayName = "Larkspur Settings"},
        {.id = 18,
         .cardTitle = QT_TR_NOOP("Windows Icon Extractor"),
         .cardName = "WinIconExtractor",
         .starName = "WinIconExtractorStarButton",
         .description = QT_TR_NOOP("Extract Icons from Windows libraries and exe files."),
         .icon = IMAGE("IconExtractor48"),
         .create = create<ExtractIconForm>,
         .shellEvents = {ShellEvent::RefreshIcons, ShellEvent::WindowTitle}},
        {.id = 17,
         .cardTitle = QT_TR_NOOP("Windows Icon Generator"),
         .cardName = "WinIconGenerator",
         .starName = "WinIconGeneratorStarButton",
         .description = QT_TR_NOOP("Create Windows icon from any PNG or JPG image."),
         .icon = IMAGE("IconGenerator48"),
         .create = create<Image2IcoForm>,
         .shellEvents = {ShellEvent::ShiftDown, ShellEvent::ShiftUp}},
    });
}

#undef IMAGE

QString Module::title() const
{
    return ModuleTable::tr(cardTitle);
}

QString Module::descriptionText() const
{
    return ModuleTable::tr(description);
}

QString Module::panelTitle() const
{
    return ModuleTable::tr(panelText);
}

QString Module::iconPath() const
{
    return QString::fromLatin1(icon);
}

bool Module::wants(ShellEvent event) const
{
    return shellEvents.contains(event);
}

ModuleTable::ModuleTable(QList<Module> rows) : m_rows(std::move(rows)) {}

const Module *ModuleTable::find(int id) const
{
    const auto found = std::ranges::find(m_rows, id, &Module::id);
    return found == m_rows.end() ? nullptr : &*found;
}

QList<const Module *> ModuleTable::inPanelOrder() const
{
    return ordered(&Module::panelOrder);
}

QList<const Module *> ModuleTable::inCloseOrder() const
{
    QList<const Module *> found = ordered(&Module::closeOrder);
    for (const Module &module : m_rows) {
        if (module.kind == Module::Kind::Page && module.closeOrder == 0)
            found.append(&module);
    }
    return found;
}

QList<int> ModuleTable::catalogue() const
{
    QList<int> ids;
    for (const Module &module : m_rows)
        ids.append(module.id);
    return ids;
}

QList<const Module *> ModuleTable::ordered(int Module::*key) const
{
    QList<const Module *> found;
    for (const Module &module : m_rows) {
        if (module.*key > 0)
            found.append(&module);
    }
    std::ranges::stable_sort(found, {}, [key](const Module *module) { return module->*key; });
    return found;
}

const ModuleTable &moduleTable()
{
    static const ModuleTable table = ModuleTable::suite();
    return table;
}
