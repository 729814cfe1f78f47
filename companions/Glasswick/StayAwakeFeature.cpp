// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/StayAwakeFeature.h"

#include "automation/engine/AgentLog.h"
#include "automation/engine/Texts.h"
#include "companions/Glasswick/EventSource.h"
#include "companions/Glasswick/Log.h"
#include "platform/PowerSchemes.h"
#include "platform/Programs.h"
#include "platform/TopLevelWindows.h"
#include "settings/AgentState.h"
#include "settings/StayAwakeSettings.h"

#include <QTimeZone>

#include <initguid.h>

using automation::AwakeSettings;
using automation::EventKind;
using automation::tr;
namespace features = automation::features;

namespace agent
{

namespace
{

constexpr QStringView schemeNote = u"Stay awake scheme"; // the scheme that was active before
constexpr int shutdownDelay = 60;                        // seconds

AwakeSettings stored()
{
    AwakeSettings wanted;
    wanted.active = settings::stayAwakeActive.read();
    wanted.program = settings::awakeProgram.read();
    const qint64 minutes =
        qint64(settings::awakeDuration.read()) * (settings::awakeDurationUnit.read() == 1 ? 60 : 1);
    wanted.seconds = minutes * 60;
    wanted.until = !wanted.program.isEmpty() ? AwakeSettings::Until::ProgramEnds
                   : minutes > 0             ? AwakeSettings::Until::Time
                                             : AwakeSettings::Until::SwitchedOff;
    wanted.nudgeSeconds = settings::awakeNudge.read() ? settings::awakeNudgeSeconds.read() : 0;
    wanted.shutDown = settings::awakeShutDown.read();
    wanted.staysWithLidClosed = settings::awakeWithLidClosed.read();
    wanted.staysOnLowBattery = settings::awakeOnLowBattery.read();
    return wanted;
}

QDateTime storedEnd()
{
    const QDateTime ends =
        QDateTime::fromString(settings::readAgentNote(settings::awakeEndNote), Qt::ISODate);
    return ends.isValid() ? ends.toLocalTime() : QDateTime();
}

void notifyMainWindow(bool awake)
{
    if (const WId window = platform::findTopLevelWindow(platform::toolkitWindowClass(),
                                                        QStringLiteral("Fernlight Larkspur")))
        platform::postToWindow(window, platform::messageStayAwakeState, awake ? 1 : 0);
}

// A mouse movement by zero pixels: it counts as user activity, but no window receives it.
void nudge()
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = MOUSEEVENTF_MOVE;
    SendInput(1, &input, sizeof input);
}

} // namespace

StayAwakeFeature::StayAwakeFeature(const Surroundings &surroundings)
    : m_surroundings(surroundings),
      m_rule(storedEnd())
{
    settings::takeOverWakeward();
    restoreScheme(); // in case the previous agent could not do so
}

StayAwakeFeature::~StayAwakeFeature()
{
    release();
    settings::writeAgentState(features::stayAwake, {});
}

void StayAwakeFeature::reload()
{
    const AwakeSettings before = std::exchange(m_settings, stored());
    decide(eventNow(EventKind::Reload));
    if (m_awake && (!m_wait || before.program != m_settings.program))
        watchProgram(m_settings.program);
}

void StayAwakeFeature::take(const automation::Event &event)
{
    decide(event);
}

void StayAwakeFeature::decide(const automation::Event &event)
{
    const automation::AwakeDecision decision = m_rule.take(event, m_settings);
    if (decision.ended) {
        settings::stayAwakeActive.write(false);
        m_settings.active = false;
    }
    settings::writeAgentNote(settings::awakeEndNote, decision.ends.isValid()
                                                         ? decision.ends.toUTC().toString(Qt::ISODate)
                                                         : QString());
    settings::writeAgentState(features::stayAwake, {decision.now, decision.next});
    m_surroundings.wakeAfter(decision.wakeAfter);
    const bool was = m_awake;
    decision.awake ? hold() : release();
    if (!decision.why.isEmpty())
        log(decision.awake ? tr("On") : tr("Off"), decision.why);
    if (decision.nudge)
        nudge();
    if (was != m_awake || decision.ended)
        notifyMainWindow(m_awake);
    if (decision.shutDown)
        log(tr("Shutdown"), m_countdown.begin(Countdown::End::ShutDown, shutdownDelay,
                                              [this](const QString &text) { log(tr("Shutdown"), text); }));
}

void StayAwakeFeature::hold()
{
    // Belongs to this thread, so Windows drops it when the process ends, however it ends.
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED |
                            (settings::awakeMonitorOn.read() ? ES_DISPLAY_REQUIRED : 0U));
    settings::awakeSchemeOn.read() ? setScheme() : restoreScheme();
    if (!m_awake) {
        m_awake = true;
        watchPower();
    }
}

void StayAwakeFeature::release()
{
    if (!m_awake)
        return;
    m_awake = false;
    SetThreadExecutionState(ES_CONTINUOUS);
    m_power = {};
    m_wait.reset();
    m_program.reset();
    restoreScheme();
}

void StayAwakeFeature::watchPower()
{
    const std::array wanted{GUID_LIDSWITCH_STATE_CHANGE, GUID_BATTERY_PERCENTAGE_REMAINING,
                            GUID_ACDC_POWER_SOURCE};
    for (std::size_t i = 0; i < wanted.size(); ++i)
        m_power[i].reset(
            RegisterPowerSettingNotification(m_surroundings.window, &wanted[i], DEVICE_NOTIFY_WINDOW_HANDLE));
}

void StayAwakeFeature::watchProgram(const QString &name)
{
    m_wait.reset();
    m_program.reset();
    if (name.isEmpty())
        return;
    m_program = platform::openProgram(name);
    // Runs on a thread-pool thread and only posts a message.
    const auto ended = [](void *window, BOOLEAN) {
        PostMessageW(static_cast<HWND>(window), messageWaitEnded, waitedProgram, 0);
    };
    if (!m_program || !RegisterWaitForSingleObject(m_wait.put(), m_program.get(), ended,
                                                   m_surroundings.window, INFINITE, WT_EXECUTEONLYONCE))
        PostMessageW(m_surroundings.window, messageWaitEnded, waitedProgram, 0);
}

bool StayAwakeFeature::handle(UINT message, WPARAM wParam, LPARAM)
{
    if (message != messageWaitEnded || wParam != waitedProgram)
        return false;
    // There may be another process of that name: some programs restart themselves.
    m_wait.reset();
    m_program.reset();
    if (m_awake && !m_settings.program.isEmpty()) {
        if (platform::openProgram(m_settings.program))
            watchProgram(m_settings.program);
        else
            decide(eventNow(EventKind::ProgramEnded));
    }
    return true;
}

void StayAwakeFeature::setScheme()
{
    if (!settings::readAgentNote(schemeNote).isEmpty())
        return; // already set
    const QList<platform::PowerScheme> schemes = platform::powerSchemes();
    const int index = settings::awakeSchemeIndex.read();
    const QString name = settings::awakeSchemeName.read();
    // Indices shift when schemes are added or removed, so the name decides; old settings have only the index.
    auto scheme = schemes.cend();
    if (index < schemes.size() && (name.isEmpty() || schemes[index].name == name))
        scheme = schemes.cbegin() + index;
    else if (!name.isEmpty())
        scheme = std::find_if(schemes.cbegin(), schemes.cend(),
                              [&](const platform::PowerScheme &one) { return one.name == name; });
    const QString active = platform::activePowerScheme();
    if (scheme == schemes.cend() || active.isEmpty()) {
        if (!m_awake)
            log(tr("Power scheme"), tr("Not changed: \"%1\" is not there").arg(name));
        return;
    }
    if (scheme->id == active)
        return;
    settings::writeAgentNote(schemeNote, active);
    if (platform::activatePowerScheme(scheme->id)) {
        log(tr("Power scheme"), tr("\"%1\" while kept awake").arg(scheme->name));
    } else {
        settings::writeAgentNote(schemeNote, {});
        if (!m_awake)
            log(tr("Power scheme"), tr("Windows refused \"%1\"").arg(scheme->name));
    }
}

void StayAwakeFeature::restoreScheme()
{
    const QString before = settings::readAgentNote(schemeNote);
    if (before.isEmpty())
        return;
    settings::writeAgentNote(schemeNote, {});
    log(tr("Power scheme"), platform::activatePowerScheme(before) ? tr("The former one again")
                                                                  : tr("Windows refused the former one"));
}

void StayAwakeFeature::log(const QString &subject, const QString &text) const
{
    m_surroundings.log.write(features::stayAwake, subject, text);
}

} // namespace agent
