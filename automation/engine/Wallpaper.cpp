// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/Wallpaper.h"

#include "automation/engine/DarkMode.h"
#include "automation/engine/Texts.h"

#include <algorithm>
#include <array>

namespace automation
{

namespace
{

constexpr qint64 minute = 60'000;
// Delays between attempts for one image. Asking a service that has nothing new is fast and cheap.
constexpr std::array pauses{1 * minute, 5 * minute, 15 * minute, 60 * minute};
constexpr qint64 hourPause = 60 * minute; // on a metered connection, and while there is nothing new
constexpr qint64 resumePause = 20'000;    // for the network to come up after sleep
constexpr qint64 settlePause = 2'000;     // while the user is still changing settings
// Setting the clock back by less than this does not repeat a change.
constexpr qint64 clockCorrection = 600; // seconds

QString quoted(const QString &title)
{
    return title.isEmpty() ? QStringLiteral("a picture") : u'"' + title + u'"';
}

QString titles(const WallpaperAnswer &answer)
{
    QStringList all;
    for (const ShownImage &picture : answer.pictures) {
        if (const QString title = quoted(picture.title); !all.contains(title))
            all.append(title);
    }
    return all.isEmpty() ? quoted({}) : all.join(QStringLiteral(", "));
}

QString pauseText(qint64 pause)
{
    return pause >= hourPause ? tr("in an hour") : tr("in %1 min").arg(pause / minute);
}

} // namespace

std::optional<QTime> dailyTime(int index, int period)
{
    return index == 0 ? std::optional<QTime>() : fromTwelveHours(index, 0, period);
}

QDateTime presentChange(const WallpaperSettings &settings, const QDateTime &now)
{
    if (!settings.daily) {
        const QTime time = now.time();
        return now.addMSecs(-(time.minute() * minute + time.second() * 1000 + time.msec()));
    }
    const QDateTime today = localMoment(now.date(), *settings.daily, now);
    return today <= now ? today : localMoment(now.date().addDays(-1), *settings.daily, now);
}

QDateTime nextChange(const WallpaperSettings &settings, const QDateTime &now)
{
    if (!settings.daily)
        return presentChange(settings, now).addSecs(3600);
    const QDateTime today = localMoment(now.date(), *settings.daily, now);
    return today > now ? today : localMoment(now.date().addDays(1), *settings.daily, now);
}

// Determines what changed settings mean for the current image and for a running process.
void Wallpaper::follow(const Event &event, const WallpaperSettings &settings, WallpaperDecision &decision)
{
    const auto before = std::exchange(m_settings, settings);
    if (!before || !before->enabled || *before == settings)
        return;
    const bool otherImage = before->source != settings.source || before->market != settings.market ||
                            before->perMonitor != settings.perMonitor ||
                            (settings.source == ImageSource::Own && before->ownCount == 0);
    if (otherImage) {
        decision.endProcess = isRunning(); // it fetches an image that is no longer wanted
        m_startedAt = -1;
        m_handled = m_tried = {};
        m_failures = 0;
        m_problem.clear();
        m_retryAt = event.ticks + settlePause;
    } else if (m_handled.isValid() && (before->keep || m_handled == presentChange(*before, event.now))) {
        m_handled = presentChange(settings, event.now); // only the schedule changed, not the image
    }
}

WallpaperDecision Wallpaper::take(const Event &event, const WallpaperSettings &settings,
                                  const WallpaperScene &scene)
{
    WallpaperDecision decision;
    follow(event, settings, decision);
    if (!settings.enabled) {
        decision.restore = true;
        decision.endProcess = decision.endProcess || isRunning();
        m_handled = m_tried = {};
        m_startedAt = m_retryAt = -1;
        m_failures = 0;
        return decision;
    }
    if (isRunning() && event.ticks - m_startedAt >= maxRun) {
        decision.endProcess = true;
        m_startedAt = -1;
        failed(event, {.reason = tr("It took too long")}, decision);
    } else if (!isRunning()) {
        consider(event, scene, decision);
    }
    outlook(event, scene, decision);
    decision.handled = m_handled;
    return decision;
}

void Wallpaper::consider(const Event &event, const WallpaperScene &scene, WallpaperDecision &decision)
{
    const bool own = m_settings->source == ImageSource::Own;
    if (own && m_settings->ownCount == 0)
        return;
    if (event.kind == EventKind::Asked) {
        const ImageStep step = event.value > 0   ? ImageStep::Next
                               : event.value < 0 ? ImageStep::Previous
                               : own             ? ImageStep::Current
                                                 : ImageStep::Newest;
        start(event, step, false, tr("you asked for it"), decision);
        return;
    }
    const QDateTime boundary = presentChange(*m_settings, event.now);
    const bool putRight = m_handled > event.now && event.now.secsTo(m_handled) < clockCorrection;
    const bool waits = (m_settings->keep && m_handled.isValid()) || (scene.remote && m_settings->waitsRemote);
    if (boundary == m_handled || putRight || waits)
        return;
    if (event.kind == EventKind::Resume && !own) { // the network comes up later than this event
        m_failures = 0;
        m_tried = boundary;
        m_retryAt = event.ticks + resumePause;
    }
    const bool first = !m_handled.isValid();
    if ((first || boundary == m_tried) && m_retryAt >= 0 && event.ticks < m_retryAt)
        return;
    ImageStep step = ImageStep::Newest;
    if (own)
        step = first ? ImageStep::Current : ImageStep::Next;
    else if (!first && !m_settings->daily)
        step = ImageStep::Next;
    m_tried = boundary;
    const QString why = first ? tr("you chose so")
                              : (m_settings->daily ? tr("your hour %1") : tr("full hour %1"))
                                    .arg(momentText(boundary, event.now));
    start(event, step, true, why, decision);
}

void Wallpaper::start(const Event &event, ImageStep step, bool automatic, const QString &why,
                      WallpaperDecision &decision)
{
    decision.start = WallpaperDecision::Start{step, automatic};
    m_startedAt = event.ticks;
    m_automatic = automatic;
    m_why = why;
}

WallpaperDecision Wallpaper::ended(const Event &event, const WallpaperSettings &settings,
                                   const WallpaperScene &scene, const std::optional<WallpaperAnswer> &answer)
{
    using Result = WallpaperAnswer::Result;
    WallpaperDecision decision;
    if (m_startedAt < 0 || !settings.enabled)
        return decision;
    m_startedAt = -1;
    const WallpaperAnswer got =
        answer.value_or(WallpaperAnswer{.reason = tr("The process that changes it ended without an answer")});
    const bool changed = got.result == Result::Changed;
    const bool nothingNew = got.result == Result::Same && m_automatic && settings.daily &&
                            settings.source != ImageSource::Own && m_handled.isValid();
    if (nothingNew) {
        m_retryAt = event.ticks + hourPause;
        if (m_problem != tr("Nothing new yet")) {
            m_problem = tr("Nothing new yet");
            decision.subject = tr("Kept");
            decision.why =
                tr("Nothing new yet at %1; asked again each hour").arg(sourceName(settings.source));
        }
    } else if (changed || got.result == Result::Same) {
        m_failures = 0;
        m_retryAt = -1;
        m_problem.clear();
        m_handled = presentChange(settings, event.now);
        decision.subject = changed ? tr("Changed") : tr("Kept");
        decision.why = changed ? QStringLiteral("%1, %2").arg(titles(got), m_why)
                               : tr("%1 is there already, %2").arg(titles(got), m_why);
        if (!got.reason.isEmpty())
            decision.why += QStringLiteral("; ") + got.reason;
    } else {
        failed(event, got, decision);
    }
    outlook(event, scene, decision);
    decision.handled = m_handled;
    return decision;
}

void Wallpaper::failed(const Event &event, const WallpaperAnswer &answer, WallpaperDecision &decision)
{
    const bool metered = answer.result == WallpaperAnswer::Result::Metered;
    decision.subject = tr("Kept");
    if (!m_automatic) { // the user sees the failure and can try again
        decision.why = answer.reason;
        return;
    }
    const auto step = std::min<std::size_t>(static_cast<std::size_t>(m_failures), pauses.size() - 1);
    const qint64 pause = metered ? hourPause : pauses[step];
    ++m_failures;
    m_retryAt = event.ticks + pause;
    // A long time without a network is logged only once.
    if (m_problem != answer.reason)
        decision.why = tr("%1; again %2").arg(answer.reason, pauseText(pause));
    m_problem = answer.reason;
}

void Wallpaper::outlook(const Event &event, const WallpaperScene &scene, WallpaperDecision &decision) const
{
    const bool own = m_settings->source == ImageSource::Own;
    decision.now = scene.shown.isEmpty() ? QString() : tr("Shows %1").arg(quoted(scene.shown));
    if (isRunning()) {
        decision.next = own ? tr("Looks at your pictures")
                            : tr("Asks %1 for a picture").arg(sourceName(m_settings->source));
        decision.wakeAfter = std::max<qint64>(m_startedAt + maxRun - event.ticks, 0);
        return;
    }
    if (own && m_settings->ownCount == 0) {
        decision.next = tr("Waits for pictures of yours");
        return;
    }
    if (m_settings->keep && m_handled.isValid()) {
        decision.next = tr("This picture stays until you choose another");
        return;
    }
    const bool due = presentChange(*m_settings, event.now) != m_handled;
    const QDateTime next = nextChange(*m_settings, event.now);
    decision.wakeAfter = event.now.msecsTo(next);
    if (scene.remote && m_settings->waitsRemote && due) {
        decision.next = tr("Changes once this PC is no longer used remotely");
        return;
    }
    decision.next = tr("Another picture at %1").arg(momentText(next, event.now));
    if (due && m_retryAt >= 0) {
        const qint64 pause = std::max<qint64>(m_retryAt - event.ticks, 0);
        if (pause < decision.wakeAfter) {
            decision.wakeAfter = pause;
            if (!m_problem.isEmpty())
                decision.next = tr("Tries again at %1: %2")
                                    .arg(momentText(event.now.addMSecs(pause), event.now), m_problem);
        }
    }
}

} // namespace automation
