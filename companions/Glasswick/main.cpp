// SPDX-License-Identifier: GPL-3.0-or-later

// The background agent: runs the features that work while the main window is closed. One process per session,
// one thread, one hidden window that the application finds by class and title. The forms store settings and
// notify it to reload them. It uses no Qt windows.
#include "automation/engine/AgentLog.h"
#include "companions/Glasswick/DarkModeFeature.h"
#include "companions/Glasswick/EventSource.h"
#include "companions/Glasswick/Feature.h"
#include "companions/Glasswick/HotKeys.h"
#include "companions/Glasswick/Log.h"
#include "companions/Glasswick/StayAwakeFeature.h"
#include "companions/Glasswick/TaskbarFeature.h"
#include "companions/Glasswick/TrayIcon.h"
#include "companions/Glasswick/WallpaperFeature.h"
#include "platform/Handle.h"
#include "platform/KnownFolders.h"
#include "platform/Text.h"
#include "platform/TopLevelWindows.h"
#include "settings/Settings.h"

#include <algorithm>
#include <array>
#include <vector>

#include <wtsapi32.h>

namespace
{

constexpr wchar_t windowClass[] = L"GLASSWICK";
constexpr wchar_t windowTitle[] = L"Transparent Taskbar";
constexpr QStringView runKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr QStringView runValue = u"Fernlight Larkspur Agent";

template <class Kind>
std::unique_ptr<agent::Feature> make(const agent::Surroundings &surroundings)
{
    return std::make_unique<Kind>(surroundings);
}

constexpr std::array featureTable{agent::FeatureRow{"Shortcut keys", make<agent::HotKeys>},
                                  agent::FeatureRow{"Stay awake", make<agent::StayAwakeFeature>},
                                  agent::FeatureRow{"Auto dark mode", make<agent::DarkModeFeature>},
                                  agent::FeatureRow{"Transparent taskbar", make<agent::TaskbarFeature>},
                                  agent::FeatureRow{"Wallpaper changer", make<agent::WallpaperFeature>},
                                  agent::FeatureRow{"Tray icon", make<agent::TrayIcon>}};

// The features' timers are numbered from here; other timers of the window use other ids.
constexpr UINT_PTR firstTimer = 100;

class Agent
{
public:
    Agent();
    ~Agent();

    bool run();

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    bool handleEvent(UINT message, WPARAM wParam, LPARAM lParam);
    void reload();

    agent::Log m_log;
    HWND m_window = nullptr;
    std::vector<std::unique_ptr<agent::Feature>> m_features;
};

// Registers the agent for logon while any feature is on.
void keepStartedAtLogon()
{
    if (!settings::isAgentNeeded()) {
        settings::deleteValue(runKey, runValue);
        return;
    }
    std::array<wchar_t, 32768> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length > 0 && length < path.size())
        settings::writeString(runKey, runValue, u'"' + platform::fromWide(path.data()) + u'"');
}

Agent::Agent() : m_log(automation::agentLogPath(platform::knownFolder(platform::KnownFolder::LocalAppData)))
{
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.lpfnWndProc = procedure;
    description.hInstance = instance;
    description.lpszClassName = windowClass;
    RegisterClassExW(&description);
    // A top-level window, since message-only windows are not found by FindWindow and receive no broadcasts.
    m_window = CreateWindowExW(WS_EX_TOOLWINDOW, windowClass, windowTitle, WS_POPUP, 0, 0, 0, 0, nullptr,
                               nullptr, instance, this);
    WTSRegisterSessionNotification(m_window, NOTIFY_FOR_THIS_SESSION);
}

Agent::~Agent()
{
    m_features.clear(); // features undo their effects while the window exists
    if (m_window) {
        WTSUnRegisterSessionNotification(m_window);
        SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
        DestroyWindow(m_window);
    }
}

bool Agent::run()
{
    if (!m_window)
        return false;
    for (const agent::FeatureRow &row : featureTable)
        m_features.push_back(row.make({m_window, m_log, firstTimer + m_features.size()}));
    reload();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // Makes Tab, Enter and Esc work in the agent's small windows.
        const HWND front = GetAncestor(message.hwnd, GA_ROOT);
        if (front && front != m_window && IsDialogMessageW(front, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

void Agent::reload()
{
    keepStartedAtLogon();
    for (const auto &feature : m_features)
        feature->reload();
}

bool Agent::handleEvent(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER && wParam >= firstTimer && wParam < firstTimer + m_features.size()) {
        KillTimer(m_window, wParam);
        m_features[wParam - firstTimer]->take(agent::eventNow(automation::EventKind::Due));
        return true;
    }
    const auto event = agent::eventOf(message, wParam, lParam);
    if (event) {
        for (const auto &feature : m_features)
            feature->take(*event);
    }
    return event.has_value();
}

LRESULT Agent::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case platform::messageReloadSettings:
        reload();
        return 0;
    case WM_CLOSE:
        reload(); // undoes what has been switched off
        PostQuitMessage(0);
        return 0;
    case WM_ENDSESSION:
        if (wParam)
            m_features.clear();
        return 0;
    default:
        break;
    }
    // DefWindowProcW must answer these messages.
    if (!handleEvent(message, wParam, lParam)) {
        for (const auto &feature : m_features) {
            if (feature->handle(message, wParam, lParam))
                return 0;
        }
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT CALLBACK Agent::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        const auto *creation = reinterpret_cast<const CREATESTRUCTW *>(lParam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    }
    auto *self = reinterpret_cast<Agent *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self || !self->m_window) // during creation
        return DefWindowProcW(window, message, wParam, lParam);
    return self->handle(message, wParam, lParam);
}

} // namespace

void agent::Surroundings::wakeAfter(qint64 milliseconds) const
{
    if (milliseconds < 0)
        KillTimer(window, timer);
    else
        SetTimer(window, timer, static_cast<UINT>(std::min<qint64>(milliseconds, USER_TIMER_MAXIMUM)),
                 nullptr);
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    const platform::ObjectHandle first(CreateMutexW(nullptr, TRUE, L"Local\\Fernlight Larkspur Agent"));
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        // A second start: the settings may be newer than what the running agent has read.
        if (const WId running = platform::findTopLevelWindow(platform::fromWide(windowClass),
                                                             platform::fromWide(windowTitle)))
            platform::postToWindow(running, platform::messageReloadSettings);
        return 0;
    }
    Agent agent;
    return agent.run() ? 0 : 1;
}
