// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/DarkModeFeature.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "companions/Glasswick/EventSource.h"
#include "companions/Glasswick/Log.h"
#include "platform/TopLevelWindows.h"
#include "settings/AgentState.h"
#include "settings/AutoDarkSettings.h"

#include <shellapi.h>

#include <array>

using automation::DarkSettings;
using automation::EventKind;
using automation::tr;
namespace features = automation::features;

namespace agent
{

namespace
{

constexpr QStringView themeKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
constexpr std::array<QStringView, 2> themeValues{u"AppsUseLightTheme", u"SystemUsesLightTheme"};
constexpr QStringView handledNote = u"Auto dark mode handled";
constexpr QStringView beforeNote = u"Auto dark mode before"; // "10": apps light, system dark
constexpr QStringView lastNote = u"Auto dark mode last";     // what the agent set last, in the same form
constexpr UINT broadcastLimit = 100;                         // ms per window

DarkSettings stored()
{
    DarkSettings wanted;
    wanted.enabled = settings::autoDarkEnabled.read();
    wanted.bySun = settings::autoDarkBySun.read();
    wanted.light = automation::fromTwelveHours(settings::lightHour.read(), settings::lightMinute.read(),
                                               settings::lightPeriod.read());
    wanted.dark = automation::fromTwelveHours(settings::darkHour.read(), settings::darkMinute.read(),
                                              settings::darkPeriod.read());
    wanted.position =
        automation::parsePosition(settings::autoDarkLatitude.read(), settings::autoDarkLongitude.read());
    wanted.waitsForFullScreen = settings::autoDarkWaits.read();
    return wanted;
}

bool isSwitched(std::size_t part)
{
    const int action = settings::autoDarkAction.read();
    return action == 0 || action == static_cast<int>(part) + 1;
}

bool isLight(std::size_t part)
{
    quint32 light = 1;
    settings::readDword(themeKey, themeValues[part], light);
    return light != 0;
}

QString theme()
{
    return QString(isLight(0) ? u'1' : u'0') + (isLight(1) ? u'1' : u'0');
}

automation::Desktop desktop()
{
    automation::Desktop desktop;
    const bool apps = !isLight(0), system = !isLight(1);
    if (!isSwitched(1) || (isSwitched(0) && apps == system))
        desktop.dark = apps;
    else if (!isSwitched(0))
        desktop.dark = system;
    QUERY_USER_NOTIFICATION_STATE state{};
    desktop.fullScreen =
        SUCCEEDED(SHQueryUserNotificationState(&state)) &&
        (state == QUNS_BUSY || state == QUNS_RUNNING_D3D_FULL_SCREEN || state == QUNS_PRESENTATION_MODE);
    return desktop;
}

// `wanted` has the format of theme(). False if the registry could not be written.
bool setTheme(const QString &wanted)
{
    bool stored = true;
    for (std::size_t part = 0; part < themeValues.size(); ++part) {
        const bool light = wanted[static_cast<qsizetype>(part)] == u'1';
        if (light != isLight(part))
            stored = settings::writeDword(themeKey, themeValues[part], light ? 1 : 0) && stored;
    }
    // Hung programs are skipped, so that they do not block the agent.
    SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"),
                        SMTO_ABORTIFHUNG, broadcastLimit, nullptr);
    return stored;
}

} // namespace

DarkModeFeature::DarkModeFeature(const Surroundings &surroundings)
    : m_surroundings(surroundings),
      m_rule(QDateTime::fromString(settings::readAgentNote(handledNote), Qt::ISODate))
{
}

DarkModeFeature::~DarkModeFeature()
{
    settings::writeAgentState(features::autoDarkMode, {});
}

void DarkModeFeature::reload()
{
    m_settings = stored();
    decide(eventNow(EventKind::Reload));
}

void DarkModeFeature::take(const automation::Event &event)
{
    decide(event);
}

bool DarkModeFeature::handle(UINT message, WPARAM, LPARAM)
{
    if (message != platform::messageSwitchTheme)
        return false;
    decide(eventNow(EventKind::Asked));
    return true;
}

void DarkModeFeature::decide(const automation::Event &event)
{
    const automation::DarkDecision decision = m_rule.take(event, m_settings, desktop());
    // Stored before switching: the broadcast re-enters this window immediately.
    settings::writeAgentNote(
        handledNote, decision.handled.isValid() ? decision.handled.toUTC().toString(Qt::ISODate) : QString());
    settings::writeAgentState(features::autoDarkMode, {decision.now, decision.next});
    m_surroundings.wakeAfter(decision.wakeAfter);
    if (!m_settings.enabled)
        undo();
    QString why = decision.why;
    if (decision.switchTo) {
        QString wanted = theme();
        for (std::size_t part = 0; part < themeValues.size(); ++part) {
            if (isSwitched(part))
                wanted[static_cast<qsizetype>(part)] = *decision.switchTo ? u'0' : u'1';
        }
        if (settings::readAgentNote(beforeNote).isEmpty())
            settings::writeAgentNote(beforeNote, theme());
        settings::writeAgentNote(lastNote, wanted);
        if (!setTheme(wanted))
            why += tr("; Windows refused");
    }
    if (!why.isEmpty()) {
        const bool dark = decision.switchTo.value_or(desktop().dark.value_or(false));
        m_surroundings.log.write(features::autoDarkMode, dark ? tr("Dark") : tr("Light"), why);
    }
}

void DarkModeFeature::undo()
{
    const QString before = settings::readAgentNote(beforeNote);
    const QString last = settings::readAgentNote(lastNote);
    settings::writeAgentNote(beforeNote, {});
    settings::writeAgentNote(lastNote, {});
    // If the user has changed the theme since, it is kept.
    if (before.size() != static_cast<qsizetype>(themeValues.size()) || last != theme() || before == last)
        return;
    setTheme(before);
    m_surroundings.log.write(features::autoDarkMode, tr("Off"),
                             tr("You switched it off; the theme is what it was before"));
}

} // namespace agent
