// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Taskbar.h"

#include "automation/engine/Texts.h"

#include <algorithm>
#include <utility>

namespace automation
{

int taskbarOpacity(int level)
{
    return 255 * (100 - std::clamp(level, 0, maxTaskbarLevel)) / 100;
}

TaskbarDecision Taskbar::take(const Event &event, const TaskbarSettings &settings, const QString &obstacle)
{
    TaskbarDecision decision;
    const TaskbarSettings before = std::exchange(m_settings, settings);
    const QString hindered = std::exchange(m_obstacle, obstacle);
    if (!settings.enabled) {
        m_restarts.clear();
        m_obstacle.clear();
        decision.restore = std::exchange(m_applied, false);
        if (decision.restore)
            decision.why = tr("You switched it off");
        return decision;
    }
    if (event.kind == EventKind::TaskbarMade && m_applied) {
        m_restarts.append(event.ticks);
        m_restarts.removeIf([&](qint64 ticks) { return event.ticks - ticks >= restartSpan; });
        if (m_restarts.size() >= maxRestarts) {
            m_restarts.clear();
            m_applied = false;
            decision.ended = decision.restore = true;
            decision.why = tr("Explorer has started twice within a minute: switched off, in case "
                              "this was the reason");
            return decision;
        }
    }
    if (!obstacle.isEmpty()) {
        decision.restore = std::exchange(m_applied, false);
        decision.now = obstacle;
        decision.next = tr("Nothing, while this is so");
        if (obstacle != hindered)
            decision.why = obstacle;
        return decision;
    }
    const bool fresh = !m_applied || before != settings;
    decision.apply = fresh || event.kind == EventKind::TaskbarMade || event.kind == EventKind::Displays ||
                     event.kind == EventKind::ThemeChanged;
    m_applied = true;
    if (fresh)
        decision.why = tr("%1 % transparent, as you set").arg(std::clamp(settings.level, 0, maxTaskbarLevel));
    else if (event.kind == EventKind::TaskbarMade)
        decision.why = tr("Again, since Explorer has started");
    decision.now = tr("The taskbar is transparent");
    decision.next = tr("Again when Explorer starts or a monitor comes");
    return decision;
}

} // namespace automation
