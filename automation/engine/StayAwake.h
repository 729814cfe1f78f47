// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <optional>

namespace automation
{

struct AwakeSettings {
    enum class Until { SwitchedOff, Time, ProgramEnds };

    bool active = false;
    Until until = Until::SwitchedOff;
    qint64 seconds = 0;   // for Until::Time
    QString program;      // for Until::ProgramEnds: "setup.exe"
    int nudgeSeconds = 0; // 0 for none
    bool shutDown = false;
    bool staysWithLidClosed = false;
    bool staysOnLowBattery = false;
};

// What the agent must do after an event.
struct AwakeDecision {
    bool awake = false;
    bool ended = false; // ended on its own, so the user's switch must be turned off too
    bool shutDown = false;
    bool nudge = false;
    QString why;           // log text; empty if nothing changed
    QString now, next;     // shown by the form
    qint64 wakeAfter = -1; // ms until the next Due; -1 for none
    QDateTime ends;        // stored, in case of a crash; invalid without an end time
};

// Keeps the PC awake until it is switched off, for some time, or until a program has ended.
class StayAwake
{
public:
    static constexpr int lowBattery = 10; // percent; Windows' default for "low"

    // `ends`: stored by an agent that did not exit properly; invalid for none.
    explicit StayAwake(const QDateTime &ends = {}) : m_storedEnd(ends) {}

    AwakeDecision take(const Event &event, const AwakeSettings &settings);

private:
    void reload(const Event &event, AwakeDecision &decision);
    void begin(const Event &event, AwakeDecision &decision);
    void end(AwakeDecision &decision, const QString &why);
    QString reasonToEnd(const Event &event);
    void nudge(const Event &event, AwakeDecision &decision);
    void describe(const Event &event, AwakeDecision &decision) const;

    AwakeSettings m_settings;
    QDateTime m_storedEnd;
    bool m_awake = false;
    bool m_lidOpen = false; // known to be open: a docked PC with a closed lid may stay awake
    qint64 m_end = 0;       // in ticks, for Until::Time
    qint64 m_nextNudge = 0; // in ticks
};

} // namespace automation
