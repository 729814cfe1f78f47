// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/StayAwake.h"

#include "automation/engine/Texts.h"

#include <algorithm>
#include <utility>

namespace automation
{

using Until = AwakeSettings::Until;

AwakeDecision StayAwake::take(const Event &event, const AwakeSettings &settings)
{
    AwakeDecision decision;
    const AwakeSettings before = std::exchange(m_settings, settings);
    if (m_awake && (before.until != settings.until || before.seconds != settings.seconds ||
                    before.program != settings.program)) {
        m_awake = false; // starts a new period
        m_storedEnd = {};
    }
    if (event.kind == EventKind::Reload)
        reload(event, decision);
    const QString reason = reasonToEnd(event);
    if (m_awake && !reason.isEmpty())
        end(decision, reason);
    if (m_awake)
        nudge(event, decision);
    describe(event, decision);
    return decision;
}

void StayAwake::reload(const Event &event, AwakeDecision &decision)
{
    if (m_settings.active && !m_awake) {
        begin(event, decision);
    } else if (!m_settings.active && m_awake) {
        m_awake = false;
        decision.why = tr("You switched it off");
    }
}

void StayAwake::begin(const Event &event, AwakeDecision &decision)
{
    m_awake = true;
    m_lidOpen = false;
    m_nextNudge = event.ticks + m_settings.nudgeSeconds * qint64(1000);
    m_end = event.ticks + m_settings.seconds * 1000;
    const QDateTime stored = std::exchange(m_storedEnd, {});
    if (m_settings.until == Until::Time && stored.isValid()) {
        // If the clock was set back, the period must not become longer than requested.
        m_end = std::min(m_end, event.ticks + event.now.msecsTo(stored));
        decision.why = tr("Goes on after a restart of the agent");
        return;
    }
    switch (m_settings.until) {
    case Until::SwitchedOff:
        decision.why = tr("You switched it on");
        break;
    case Until::Time:
        decision.why = tr("You switched it on, until %1")
                           .arg(momentText(event.now.addSecs(m_settings.seconds), event.now));
        break;
    case Until::ProgramEnds:
        decision.why = tr("You switched it on, until %1 has ended").arg(m_settings.program);
        break;
    }
}

void StayAwake::end(AwakeDecision &decision, const QString &why)
{
    m_awake = false;
    decision.ended = true;
    decision.why = why;
}

QString StayAwake::reasonToEnd(const Event &event)
{
    if (m_settings.until == Until::Time && event.ticks >= m_end)
        return tr("The time is over");
    switch (event.kind) {
    case EventKind::ProgramEnded:
        return m_settings.until == Until::ProgramEnds ? tr("%1 has ended").arg(m_settings.program)
                                                      : QString();
    case EventKind::Battery:
        return event.value >= 0 && event.value <= lowBattery && !m_settings.staysOnLowBattery
                   ? tr("The battery is low (%1 %)").arg(event.value)
                   : QString();
    case EventKind::Lid: {
        const bool wasOpen = std::exchange(m_lidOpen, event.value != 0);
        return wasOpen && !m_lidOpen && !m_settings.staysWithLidClosed ? tr("The lid was closed") : QString();
    }
    default:
        return {};
    }
}

void StayAwake::nudge(const Event &event, AwakeDecision &decision)
{
    const qint64 pause = m_settings.nudgeSeconds * qint64(1000);
    if (pause <= 0)
        return;
    m_nextNudge = std::min(m_nextNudge, event.ticks + pause);
    if (event.ticks >= m_nextNudge) {
        decision.nudge = true;
        m_nextNudge = event.ticks + pause;
    }
}

void StayAwake::describe(const Event &event, AwakeDecision &decision) const
{
    decision.awake = m_awake;
    if (!m_awake) {
        // Only when the period is over. A closed lid or low battery puts the PC to sleep anyway, and the user
        // would later find it shut down.
        decision.shutDown = decision.ended && m_settings.shutDown && event.kind != EventKind::Battery &&
                            event.kind != EventKind::Lid;
        return;
    }
    decision.now = tr("This PC is kept awake");
    const QString then = m_settings.shutDown ? tr("Windows shuts down") : tr("Ends");
    if (m_settings.until == Until::Time) {
        decision.ends = event.now.addMSecs(m_end - event.ticks);
        decision.next = then + QStringLiteral(" at ") + momentText(decision.ends, event.now);
        decision.wakeAfter = m_end - event.ticks;
    } else if (m_settings.until == Until::ProgramEnds) {
        decision.next = tr("%1 when %2 has ended").arg(then, m_settings.program);
    } else {
        decision.next = tr("Goes on until you switch it off");
    }
    if (m_settings.nudgeSeconds > 0) {
        const qint64 untilNudge = std::max<qint64>(0, m_nextNudge - event.ticks);
        decision.wakeAfter = decision.wakeAfter < 0 ? untilNudge : std::min(decision.wakeAfter, untilNudge);
    }
}

} // namespace automation
