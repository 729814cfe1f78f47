// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <QList>

namespace automation
{

struct TaskbarSettings {
    enum class Mode { Clear = 0, Blurred = 1, Acrylic = 2 }; // stored values

    bool enabled = false;
    int level = 50; // percent of transparency
    Mode mode = Mode::Clear;

    bool operator==(const TaskbarSettings &) const = default;
};

// At least a tenth of the background remains, so that the clock is readable on any wallpaper.
inline constexpr int maxTaskbarLevel = 90;

// Alpha, 0 to 255.
int taskbarOpacity(int level);

struct TaskbarDecision {
    bool apply = false;   // set the effect on every monitor's taskbar
    bool restore = false; // reset all taskbars to Windows' default
    bool ended = false;   // ended on its own, so the user's switch must be turned off too
    QString why;          // log text; empty if nothing changed
    QString now, next;    // shown by the form
};

// Makes the taskbars transparent, again whenever Windows recreates them; stops if Explorer keeps restarting.
class Taskbar
{
public:
    static constexpr qint64 restartSpan = 60'000; // ms
    static constexpr int maxRestarts = 2;         // within the span

    // `obstacle`: why this Windows does not support it, as a sentence; empty if it does.
    TaskbarDecision take(const Event &event, const TaskbarSettings &settings, const QString &obstacle);

private:
    TaskbarSettings m_settings;
    bool m_applied = false;
    QString m_obstacle;
    QList<qint64> m_restarts; // ticks of restarts within the last restartSpan
};

} // namespace automation
