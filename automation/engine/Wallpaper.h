// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"
#include "automation/engine/WallpaperJob.h"

#include <QTime>

#include <optional>

namespace automation
{

struct WallpaperSettings {
    bool enabled = false;
    std::optional<QTime> daily; // nothing: at every full hour
    PictureSource source = PictureSource::Bing;
    QString market;
    qsizetype ownCount = 0;
    bool perMonitor = false;
    bool keep = false;        // the picture stays until the user chooses another
    bool waitsRemote = false; // while this PC is used from another one

    bool operator==(const WallpaperSettings &) const = default;
};

// As Windows' settings store it: `index` 0 is every hour, 1 to 12 that hour of a day, period 0 AM, 1 PM.
std::optional<QTime> dailyTime(int index, int period);

// The moment from which on the present picture counts, and the next one. Both in the zone of `now`.
QDateTime presentChange(const WallpaperSettings &settings, const QDateTime &now);
QDateTime nextChange(const WallpaperSettings &settings, const QDateTime &now);

// Around an event.
struct WallpaperScene {
    bool remote = false;
    QString shown; // the title of what is on the desktop by us; empty for none
};

struct WallpaperDecision {
    // The process is to be started for a picture.
    struct Start {
        PictureStep step = PictureStep::Newest;
        bool automatic = false;
    };
    std::optional<Start> start;
    bool restore = false;    // it is off: what was there before comes back, if we have changed it
    bool endProcess = false; // it takes too long, or is not wanted any more
    QString subject, why;    // for the log; empty while nothing changed
    QString now, next;       // for the form
    qint64 wakeAfter = -1;   // ms until Due; -1: not wanted
    QDateTime handled;       // the moment that was seen to, kept over the agent's end
};

// Changes the picture at its times, once each, and tries again when the network was not there. The process
// that does it runs meanwhile: ended() tells of its answer.
class Wallpaper
{
public:
    static constexpr qint64 maxRun = 180'000; // ms

    explicit Wallpaper(const QDateTime &handled = {}) : m_handled(handled) {}

    // Asked: the event's value is 1 for the next picture, -1 for the one before, 0 for the newest.
    WallpaperDecision take(const Event &event, const WallpaperSettings &settings,
                           const WallpaperScene &scene);
    // `answer`: nothing when there was none.
    WallpaperDecision ended(const Event &event, const WallpaperSettings &settings,
                            const WallpaperScene &scene, const std::optional<WallpaperAnswer> &answer);

    bool isRunning() const { return m_startedAt >= 0; }

private:
    void follow(const Event &event, const WallpaperSettings &settings, WallpaperDecision &decision);
    void consider(const Event &event, const WallpaperScene &scene, WallpaperDecision &decision);
    void start(const Event &event, PictureStep step, bool automatic, const QString &why,
               WallpaperDecision &decision);
    void outlook(const Event &event, const WallpaperScene &scene, WallpaperDecision &decision) const;
    void failed(const Event &event, const WallpaperAnswer &answer, WallpaperDecision &decision);

    std::optional<WallpaperSettings> m_settings;
    QDateTime m_handled;                     // the boundary whose picture is there
    QDateTime m_tried;                       // the one that was tried last
    qint64 m_startedAt = -1, m_retryAt = -1; // ticks; -1: none
    int m_failures = 0;                      // one after the other
    bool m_automatic = false;
    QString m_why, m_problem; // of what runs; of the last failure
};

} // namespace automation
