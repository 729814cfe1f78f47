// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/TaskbarFeature.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "companions/Glasswick/EventSource.h"
#include "companions/Glasswick/Log.h"
#include "settings/AgentState.h"
#include "settings/TaskbarSettings.h"

#include <QOperatingSystemVersion>

#include <vector>

using automation::TaskbarSettings;
using automation::tr;
namespace features = automation::features;

namespace agent
{

namespace
{

// From here on (Windows 11 22H2) Explorer draws the taskbar by itself and passes over what is set.
constexpr int firstBuildWithout = 22621;
constexpr QStringView appliedNote = u"Transparent taskbar applied";

// The structures of SetWindowCompositionAttribute() of user32, which no header declares.
struct AccentPolicy {
    int state;
    int flags;
    DWORD color; // ABGR
    int animation;
};
struct CompositionData {
    int attribute;
    void *data;
    SIZE_T size;
};
enum AccentState { accentDisabled = 0, accentTransparent = 2, accentBlur = 3, accentAcrylic = 4 };
constexpr int accentAttribute = 19;
constexpr int accentDrawsGradient = 2;
using SetAttribute = BOOL(WINAPI *)(HWND, CompositionData *);

SetAttribute setAttribute()
{
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetWindowCompositionAttribute");
    return reinterpret_cast<SetAttribute>(reinterpret_cast<void *>(found));
}

// One of each monitor.
std::vector<HWND> taskbars()
{
    std::vector<HWND> found;
    for (const wchar_t *name : {L"Shell_TrayWnd", L"Shell_SecondaryTrayWnd"}) {
        for (HWND window = FindWindowExW(nullptr, nullptr, name, nullptr); window;
             window = FindWindowExW(nullptr, window, name, nullptr))
            found.push_back(window);
    }
    return found;
}

bool set(HWND taskbar, AccentPolicy policy)
{
    CompositionData data{accentAttribute, &policy, sizeof policy};
    const SetAttribute call = setAttribute();
    return call && call(taskbar, &data);
}

bool isHighContrast()
{
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

QString obstacle()
{
    if (!setAttribute() || QOperatingSystemVersion::current().microVersion() >= firstBuildWithout)
        return tr("This version of Windows draws the taskbar by itself and does not take it");
    if (isHighContrast())
        return tr("A contrast theme is on: the taskbar keeps its colours");
    if (taskbars().empty())
        return tr("There is no taskbar at present");
    return {};
}

} // namespace

TaskbarFeature::TaskbarFeature(const Surroundings &surroundings) : m_surroundings(surroundings)
{
    if (!settings::readAgentNote(appliedNote).isEmpty() && !settings::taskbarEnabled.read())
        restore(); // after an agent that could not
}

TaskbarFeature::~TaskbarFeature()
{
    if (!settings::readAgentNote(appliedNote).isEmpty())
        restore();
    settings::writeAgentState(features::taskbar, {});
}

void TaskbarFeature::reload()
{
    m_settings = {settings::taskbarEnabled.read(), settings::taskbarLevel.read(),
                  static_cast<TaskbarSettings::Mode>(settings::taskbarMode.read())};
    take(eventNow(automation::EventKind::Reload));
}

void TaskbarFeature::take(const automation::Event &event)
{
    const automation::TaskbarDecision decision =
        m_rule.take(event, m_settings, m_settings.enabled ? obstacle() : QString());
    if (decision.ended) {
        m_settings.enabled = false;
        settings::taskbarEnabled.write(false);
    }
    if (decision.restore)
        restore();
    if (decision.apply)
        apply();
    settings::writeAgentState(features::taskbar, {decision.now, decision.next});
    if (!decision.why.isEmpty())
        m_surroundings.log.write(features::taskbar, decision.apply ? tr("Transparent") : tr("Off"),
                                 decision.why);
}

void TaskbarFeature::apply()
{
    settings::writeAgentNote(appliedNote, QStringLiteral("1"));
    quint32 light = 0;
    settings::readDword(u"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                        u"SystemUsesLightTheme", light);
    const auto opacity = static_cast<DWORD>(automation::taskbarOpacity(m_settings.level));
    AccentPolicy policy{accentTransparent, accentDrawsGradient,
                        opacity << 24 | (light ? 0xeeeeeeU : 0x202020U), 0};
    if (m_settings.mode != TaskbarSettings::Mode::Clear)
        policy.state = m_settings.mode == TaskbarSettings::Mode::Blurred ? accentBlur : accentAcrylic;
    int refused = 0;
    for (const HWND taskbar : taskbars())
        refused += set(taskbar, policy) ? 0 : 1;
    if (refused > 0)
        m_surroundings.log.write(
            features::taskbar, tr("Refused"),
            tr("Windows did not take it for %1 of %2 taskbars").arg(refused).arg(taskbars().size()));
}

void TaskbarFeature::restore()
{
    settings::writeAgentNote(appliedNote, {});
    for (const HWND taskbar : taskbars()) {
        set(taskbar, {accentDisabled, 0, 0, 0});
        PostMessageW(taskbar, WM_DWMCOMPOSITIONCHANGED, TRUE, 0); // it draws itself anew
    }
}

} // namespace agent
