// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <QList>

namespace automation
{

struct TaskbarSettings {
    enum class Mode { Clear = 0, Blurred = 1, Acrylic = 2 }; // the numbers are stored

    bool enabled = false;
    int level = 50; // percent of transparency
    Mode mode = Mode::Clear;

    bool operator==(const TaskbarSettings &) const = default;
};

// A tenth of the background stays, so that the clock can be read on any picture.
inline constexpr int maxTaskbarLevel = 90;

// 0 to 255.
int taskbarOpacity(int level);

struct TaskbarDecision {
    bool apply = false;   // to every monitor's taskbar
    bool restore = false; // to what Windows makes of them
    bool ended = false;   // by itself: the user's switch goes off as well
    QString why;          // for the log; empty while nothing changed
    QString now, next;    // for the form
};

// Makes the taskbars transparent, and again whenever Windows has made them anew; gives up when Explorer does
// not bear it.
class Taskbar
{
public:
    static constexpr qint64 restartSpan = 60'000; // ms
    static constexpr int maxRestarts = 2;         // within the span

    // `obstacle`: why this Windows does not take it, in a sentence; empty when it does.
    TaskbarDecision take(const Event &event, const TaskbarSettings &settings, const QString &obstacle);

private:
    TaskbarSettings m_settings;
    bool m_applied = false;
    QString m_obstacle;
    QList<qint64> m_restarts; // ticks, within the last span
};

} // namespace automation
