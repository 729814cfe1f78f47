// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/DarkMode.h"

#include "automation/engine/Texts.h"

#include <algorithm>

namespace automation
{

namespace
{

constexpr int searchedDays = 366; // longer than any polar day or night
constexpr qint64 fullScreenPause = 60'000;
// Setting the clock back by less than this does not switch back to the previous state.
constexpr qint64 clockCorrection = 600; // seconds

QString themeName(bool dark)
{
    return dark ? tr("Dark") : tr("Light");
}

// Converted to the time zone of `like`.
QDateTime localTime(const QDateTime &moment, const QDateTime &like)
{
    QDateTime local = like;
    local.setMSecsSinceEpoch(moment.toMSecsSinceEpoch());
    return local;
}

bool isUsable(const DarkSettings &settings)
{
    return settings.bySun
               ? settings.position.has_value()
               : settings.light.isValid() && settings.dark.isValid() && settings.light != settings.dark;
}

QList<Boundary> boundariesOf(const DarkSettings &settings, const QDate &day, const QDateTime &now)
{
    QList<Boundary> found;
    if (settings.bySun) {
        const SunDay sun = sunDay(day, *settings.position);
        if (sun.rise)
            found.append({localTime(*sun.rise, now), false, tr("sunrise")});
        if (sun.set)
            found.append({localTime(*sun.set, now), true, tr("sunset")});
    } else {
        found.append({localMoment(day, settings.light, now), false, tr("your hour")});
        found.append({localMoment(day, settings.dark, now), true, tr("your hour")});
    }
    std::sort(found.begin(), found.end(),
              [](const Boundary &left, const Boundary &right) { return left.when < right.when; });
    return found;
}

} // namespace

QTime fromTwelveHours(int hour, int minute, int period)
{
    return QTime(hour % 12 + (period == 1 ? 12 : 0), minute);
}

std::optional<Boundary> presentBoundary(const DarkSettings &settings, const QDateTime &now)
{
    if (!isUsable(settings))
        return {};
    std::optional<Boundary> present;
    // The rise or set of a date at that position may fall on an adjacent date of the local time zone.
    for (int back = -1; back <= searchedDays && !present; ++back) {
        QDateTime latest;
        for (int neighbour = 0; neighbour <= 1; ++neighbour) {
            for (const Boundary &one : boundariesOf(settings, now.date().addDays(-back - neighbour), now)) {
                if (one.when <= now && (!latest.isValid() || one.when > latest)) {
                    latest = one.when;
                    present = one;
                }
            }
        }
    }
    if (!settings.bySun)
        return present;
    const SunDay today = sunDay(now.date(), *settings.position);
    if (!today.rise && !today.set) { // the search may just miss the last crossing by seconds
        if (!present)
            present = {localMoment(now.date(), QTime(0, 0), now)};
        present->dark = !today.up;
        present->lasts = true;
        present->reason = today.up ? tr("polar day") : tr("polar night");
    }
    return present;
}

std::optional<Boundary> nextBoundary(const DarkSettings &settings, const QDateTime &now)
{
    if (!isUsable(settings))
        return {};
    std::optional<Boundary> next;
    for (int ahead = -1; ahead <= searchedDays && !next; ++ahead) {
        for (int neighbour = 0; neighbour <= 1; ++neighbour) {
            for (const Boundary &one : boundariesOf(settings, now.date().addDays(ahead + neighbour), now)) {
                if (one.when > now && (!next || one.when < next->when))
                    next = one;
            }
        }
    }
    return next;
}

QString dryRun(const DarkSettings &settings, const QDate &day, const QDateTime &now)
{
    if (!isUsable(settings))
        return {};
    QStringList parts;
    for (int neighbour = -1; neighbour <= 1; ++neighbour) {
        for (const Boundary &one : boundariesOf(settings, day.addDays(neighbour), now)) {
            if (one.when.date() == day)
                parts.append(
                    tr("%1 at %2 (%3)").arg(themeName(one.dark), momentText(one.when, one.when), one.reason));
        }
    }
    if (parts.isEmpty())
        return presentBoundary(settings, localMoment(day, QTime(12, 0), now))->dark
                   ? tr("Dark all day: the sun does not rise")
                   : tr("Light all day: the sun does not set");
    return parts.join(QStringLiteral(", "));
}

DarkDecision DarkMode::take(const Event &event, const DarkSettings &settings, const Desktop &desktop)
{
    DarkDecision decision;
    if (m_settings && *m_settings != settings)
        m_handled = {};
    m_settings = settings;
    if (!settings.enabled) {
        m_handled = {};
        m_shown = {};
        return decision;
    }
    const auto boundary = presentBoundary(settings, event.now);
    if (!boundary) {
        decision.now = tr("It cannot tell light from dark");
        decision.next = settings.bySun ? tr("Waits for the place, as latitude and longitude")
                                       : tr("Waits for two hours that differ");
        return decision;
    }
    pass(event, *boundary, desktop, decision);
    decision.handled = m_handled;
    const std::optional<bool> dark = decision.switchTo ? decision.switchTo : desktop.dark;
    m_shown = dark;
    if (dark)
        decision.now = *dark ? tr("It is dark") : tr("It is light");
    return decision;
}

void DarkMode::pass(const Event &event, const Boundary &boundary, const Desktop &desktop,
                    DarkDecision &decision)
{
    const auto next = nextBoundary(*m_settings, event.now);
    const QString until = next ? momentText(next->when, event.now) : tr("you change the place");
    if (next) {
        decision.next = tr("%1 at %2 (%3)").arg(themeName(next->dark), until, next->reason);
        decision.wakeAfter = event.now.msecsTo(next->when);
    }
    const bool putRight = m_handled > event.now && event.now.secsTo(m_handled) < clockCorrection;
    if (event.kind == EventKind::Asked) {
        m_handled = boundary.when;
        decision.switchTo = !desktop.dark.value_or(false);
        decision.why = tr("You asked for it; respected until %1").arg(until);
    } else if (boundary.when != m_handled && !putRight) {
        const bool toDo = desktop.dark != boundary.dark;
        if (toDo && desktop.fullScreen && m_settings->waitsForFullScreen) {
            decision.next = tr("%1 when the full-screen program has ended").arg(themeName(boundary.dark));
            decision.wakeAfter = fullScreenPause;
            return;
        }
        m_handled = boundary.when;
        if (toDo) {
            decision.switchTo = boundary.dark;
            decision.why = boundary.reason;
            decision.why[0] = decision.why[0].toUpper();
            if (!boundary.lasts)
                decision.why += u' ' + momentText(boundary.when, event.now);
        }
    } else if (event.kind == EventKind::ThemeChanged && m_shown && desktop.dark && desktop.dark != m_shown) {
        decision.why =
            tr("You switched to %1; respected until %2").arg(*desktop.dark ? tr("dark") : tr("light"), until);
    }
}

} // namespace automation
