// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/TrayIcon.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "automation/engine/TrayMenu.h"
#include "companions/Glasswick/Launch.h"
#include "companions/Glasswick/Log.h"
#include "platform/MenuHandle.h"
#include "platform/Text.h"
#include "platform/TopLevelWindows.h"
#include "settings/AgentState.h"
#include "settings/AutoDarkSettings.h"
#include "settings/StayAwakeSettings.h"
#include "settings/TaskbarSettings.h"

#include <shellapi.h>

using automation::tr;

namespace features = automation::features;

namespace agent
{

namespace
{

constexpr UINT messageIcon = WM_APP + 2;
constexpr UINT iconId = 1;
constexpr WORD iconResource = 1; // in every executable of the suite
constexpr wchar_t tip[] = L"Fernlight Larkspur";
// While the application starts.
constexpr qint64 checkInterval = 500; // ms
constexpr int maxTries = 40;

enum Command : UINT {
    openCommand = 1,
    awakeCommand,
    darkCommand,
    hideCommand,
    firstPage = 100,
    firstModule = 200
};

NOTIFYICONDATAW iconData(HWND window)
{
    NOTIFYICONDATAW data = {};
    data.cbSize = sizeof data;
    data.hWnd = window;
    data.uID = iconId;
    return data;
}

HWND mainWindow()
{
    return reinterpret_cast<HWND>(
        platform::findTopLevelWindow(platform::toolkitWindowClass(), platform::fromWide(tip)));
}

} // namespace

TrayIcon::TrayIcon(const Surroundings &surroundings) : m_surroundings(surroundings) {}

TrayIcon::~TrayIcon()
{
    hide();
    settings::writeAgentState(features::trayIcon, {});
}

void TrayIcon::reload()
{
    const bool wanted = settings::trayIconShown.read();
    if (wanted && !m_shown)
        show();
    else if (!wanted && m_shown)
        hide();
}

void TrayIcon::take(const automation::Event &event)
{
    if (event.kind == automation::EventKind::TaskbarMade && settings::trayIconShown.read()) {
        m_shown = false; // a new taskbar does not have our icon
        show();
    } else if (event.kind == automation::EventKind::Due && m_waitingModule >= 0) {
        if (mainWindow())
            openSuite(m_waitingModule);
        else if (++m_tries < maxTries)
            m_surroundings.wakeAfter(checkInterval);
        else
            m_waitingModule = -1;
    }
}

void TrayIcon::show()
{
    NOTIFYICONDATAW data = iconData(m_surroundings.window);
    data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_SHOWTIP;
    data.uCallbackMessage = messageIcon;
    // LR_SHARED: Windows frees it.
    data.hIcon = static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(iconResource),
                                               IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                               GetSystemMetrics(SM_CYSMICON), LR_SHARED));
    wcscpy_s(data.szTip, tip);
    // If Explorer restarted but kept the icon, NIM_ADD fails; then modify it.
    m_shown = Shell_NotifyIconW(NIM_ADD, &data) || Shell_NotifyIconW(NIM_MODIFY, &data);
    data.uVersion = NOTIFYICON_VERSION_4;
    Shell_NotifyIconW(NIM_SETVERSION, &data);
    const settings::AgentState state =
        m_shown ? settings::AgentState{tr("The icon is in the notification area"),
                                       tr("Shown again when Explorer restarts")}
                : settings::AgentState{tr("There is no notification area at present"),
                                       tr("Shown when Explorer starts")};
    if (state == settings::readAgentState(features::trayIcon))
        return;
    settings::writeAgentState(features::trayIcon, state);
    log(m_shown ? tr("Shown") : tr("Waits"), m_shown ? tr("You switched it on") : state.now);
}

void TrayIcon::hide()
{
    if (!m_shown)
        return;
    m_shown = false;
    NOTIFYICONDATAW data = iconData(m_surroundings.window);
    Shell_NotifyIconW(NIM_DELETE, &data);
    settings::writeAgentState(features::trayIcon, {});
}

bool TrayIcon::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != messageIcon)
        return false;
    switch (LOWORD(lParam)) {
    case NIN_SELECT:    // click
    case NIN_KEYSELECT: // Enter or Space
    case WM_CONTEXTMENU:
        openMenu(static_cast<short>(LOWORD(wParam)), static_cast<short>(HIWORD(wParam)));
        break;
    default:
        break;
    }
    return true;
}

void TrayIcon::openMenu(int x, int y)
{
    const auto add = [](const platform::MenuHandle &menu, UINT command, const wchar_t *text, UINT flags = 0) {
        AppendMenuW(menu.get(), MF_STRING | flags, command, text);
    };
    const platform::MenuHandle menu(CreatePopupMenu());
    add(menu, openCommand, L"&Open Fernlight Larkspur");
    SetMenuDefaultItem(menu.get(), openCommand, FALSE);
    AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    add(menu, awakeCommand, L"&Keep this PC awake", settings::stayAwakeActive.read() ? MF_CHECKED : 0U);
    add(menu, darkCommand, L"&Switch light or dark now", settings::autoDarkEnabled.read() ? 0U : MF_GRAYED);
    AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    platform::MenuHandle pages(CreatePopupMenu());
    for (std::size_t i = 0; i < automation::settingsPages.size(); ++i)
        add(pages, firstPage + static_cast<UINT>(i), automation::settingsPages[i].title);
    platform::MenuHandle modules(CreatePopupMenu());
    for (std::size_t i = 0; i < automation::suiteModules.size(); ++i)
        add(modules, firstModule + static_cast<UINT>(i), automation::suiteModules[i].title);
    // The parent menu owns its submenus.
    AppendMenuW(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(pages.release()), L"&Windows settings");
    AppendMenuW(menu.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(modules.release()), L"&Tools");
    AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
    add(menu, hideCommand, L"&Hide this icon");

    // Without the two calls around it, the menu would stay open when the user clicks elsewhere.
    SetForegroundWindow(m_surroundings.window);
    const int command = TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, x, y,
                                         m_surroundings.window, nullptr);
    PostMessageW(m_surroundings.window, WM_NULL, 0, 0);
    if (command > 0)
        carryOut(static_cast<UINT>(command));
}

void TrayIcon::carryOut(UINT command)
{
    const auto reloadAll = [this] {
        PostMessageW(m_surroundings.window, platform::messageReloadSettings, 0, 0);
    };
    if (command >= firstModule && command - firstModule < automation::suiteModules.size()) {
        openSuite(automation::suiteModules[command - firstModule].id);
    } else if (command >= firstPage && command - firstPage < automation::settingsPages.size()) {
        ShellExecuteW(nullptr, L"open", automation::settingsPages[command - firstPage].address, nullptr,
                      nullptr, SW_SHOWNORMAL);
    } else if (command == openCommand) {
        openSuite(-1);
    } else if (command == awakeCommand) {
        settings::writeAgentNote(settings::awakeEndNote, {}); // starts a new period
        settings::stayAwakeActive.write(!settings::stayAwakeActive.read());
        reloadAll();
    } else if (command == darkCommand) {
        PostMessageW(m_surroundings.window, platform::messageSwitchTheme, 0, 0);
    } else if (command == hideCommand) {
        settings::trayIconShown.write(false);
        log(tr("Hidden"), tr("By its menu"));
        reloadAll();
    }
}

void TrayIcon::openSuite(int module)
{
    m_waitingModule = -1;
    if (const HWND window = mainWindow()) {
        if (module >= 0)
            PostMessageW(window, platform::messageOpenModule, static_cast<WPARAM>(module), 0);
        if (IsIconic(window))
            ShowWindow(window, SW_RESTORE);
        SetForegroundWindow(window);
        return;
    }
    const QString folder = settings::installationFolder();
    const QString outcome = startProgram(folder + QStringLiteral("\\FernlightLarkspur.exe"), folder);
    log(tr("Open"), outcome);
    if (module >= 0) {
        m_waitingModule = module;
        m_tries = 0;
        m_surroundings.wakeAfter(checkInterval);
    }
}

void TrayIcon::log(const QString &subject, const QString &text) const
{
    m_surroundings.log.write(features::trayIcon, subject, text);
}

} // namespace agent
