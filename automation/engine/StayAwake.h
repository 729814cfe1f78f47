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
    qint64 seconds = 0;   // of Time
    QString program;      // of ProgramEnds: "setup.exe"
    int nudgeSeconds = 0; // 0: none
    bool shutDown = false;
    bool staysWithLidClosed = false;
    bool staysOnLowBattery = false;
};

// What the agent has to do after an event.
struct AwakeDecision {
    bool awake = false;
    bool ended = false; // by itself: the user's switch goes off as well
    bool shutDown = false;
    bool nudge = false;
    QString why;           // for the log; empty while nothing changed
    QString now, next;     // for the form
    qint64 wakeAfter = -1; // ms until Due; -1: not wanted
    QDateTime ends;        // kept over a crash; invalid without an end by time
};

// Keeps the PC awake until it is switched off, for a time, or until a program has ended.
class StayAwake
{
public:
    static constexpr int lowBattery = 10; // percent, Windows' own default of "low"

    // `ends`: of a former agent that could not end properly; invalid for none.
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
    bool m_lidOpen = false; // known to be: a PC that is docked and closed may be kept awake
    qint64 m_end = 0;       // ticks; of Until::Time
    qint64 m_nextNudge = 0; // ticks
};

} // namespace automation
