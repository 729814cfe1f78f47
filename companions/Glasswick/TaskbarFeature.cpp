// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/TaskbarFeature.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "companions/Glasswick/EventSource.h"
#include "companions/Glasswick/Log.h"
#include "settings/AgentState.h"
#include "settings/TaskbarSettings.h"

#include <QOperatingSystemVersion>

#include <algorithm>
#include <vector>

using automation::TaskbarSettings;
using automation::tr;
namespace features = automation::features;

namespace agent
{

namespace
{

// From this build on (Windows 11 22H2) Explorer draws the taskbar itself and ignores the attribute.
constexpr int firstBuildWithout = 22621;
constexpr QStringView appliedNote = u"Transparent taskbar applied";

// Structures for user32's undocumented SetWindowCompositionAttribute().
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

// One per monitor.
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
        return tr("This version of Windows does not allow it");
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
        restore(); // in case the previous agent could not do so
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
    const QString refusedBefore = m_refused;
    if (decision.apply)
        m_refused = apply();
    else if (decision.restore)
        m_refused.clear();
    settings::writeAgentState(features::taskbar,
                              {m_refused.isEmpty() ? decision.now : m_refused, decision.next});
    if (!m_refused.isEmpty() && m_refused != refusedBefore)
        m_surroundings.log.write(features::taskbar, tr("Refused"), m_refused);
    else if (!decision.why.isEmpty() && m_refused.isEmpty())
        m_surroundings.log.write(features::taskbar, decision.apply ? tr("Transparent") : tr("Off"),
                                 decision.why);
}

// Returns an error sentence; empty on success.
QString TaskbarFeature::apply()
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
    const std::vector<HWND> all = taskbars();
    const auto refused = std::count_if(all.begin(), all.end(), [&](HWND one) { return !set(one, policy); });
    if (refused == 0)
        return {};
    return all.size() == 1
               ? tr("Windows did not make the taskbar transparent")
               : tr("Windows did not make %1 of %2 taskbars transparent").arg(refused).arg(all.size());
}

void TaskbarFeature::restore()
{
    settings::writeAgentNote(appliedNote, {});
    for (const HWND taskbar : taskbars()) {
        set(taskbar, {accentDisabled, 0, 0, 0});
        PostMessageW(taskbar, WM_DWMCOMPOSITIONCHANGED, TRUE, 0); // makes it redraw itself
    }
}

} // namespace agent
