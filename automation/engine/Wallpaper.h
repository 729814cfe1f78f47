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
    std::optional<QTime> daily; // without a value: every full hour
    ImageSource source = ImageSource::Bing;
    QString market;
    qsizetype ownCount = 0;
    bool perMonitor = false;
    bool keep = false;        // the image stays until the user changes it
    bool waitsRemote = false; // during a remote session

    bool operator==(const WallpaperSettings &) const = default;
};

// Converts the format that Windows uses: `index` 0 for every hour, 1 to 12 for that hour of the day, period 0
// AM, 1 PM.
std::optional<QTime> dailyTime(int index, int period);

// The time since which the current image is due, and the time of the next change. Both in the zone of `now`.
QDateTime presentChange(const WallpaperSettings &settings, const QDateTime &now);
QDateTime nextChange(const WallpaperSettings &settings, const QDateTime &now);

// State of the system at an event.
struct WallpaperScene {
    bool remote = false;
    QString shown; // title of our current wallpaper; empty for none
};

struct WallpaperDecision {
    // Start the process for an image.
    struct Start {
        ImageStep step = ImageStep::Newest;
        bool automatic = false;
    };
    std::optional<Start> start;
    bool restore = false;    // feature is off: restore the user's wallpaper if we changed it
    bool endProcess = false; // the process takes too long or is no longer needed
    QString subject, why;    // log text; empty if nothing changed
    QString now, next;       // shown by the form
    qint64 wakeAfter = -1;   // ms until the next Due; -1 for none
    QDateTime handled;       // the last change time that was handled; stored across restarts of the agent
};

// Changes the image once at each due time, and retries if there was no network. A separate process does the
// work; its answer is passed to ended().
class Wallpaper
{
public:
    static constexpr qint64 maxRun = 180'000; // ms

    explicit Wallpaper(const QDateTime &handled = {}) : m_handled(handled) {}

    // For EventKind::Asked, the event's value is 1 for the next image, -1 for the previous one, 0 for the
    // newest.
    WallpaperDecision take(const Event &event, const WallpaperSettings &settings,
                           const WallpaperScene &scene);
    // `answer` is nullopt if the process wrote none.
    WallpaperDecision ended(const Event &event, const WallpaperSettings &settings,
                            const WallpaperScene &scene, const std::optional<WallpaperAnswer> &answer);

    bool isRunning() const { return m_startedAt >= 0; }

private:
    void follow(const Event &event, const WallpaperSettings &settings, WallpaperDecision &decision);
    void consider(const Event &event, const WallpaperScene &scene, WallpaperDecision &decision);
    void start(const Event &event, ImageStep step, bool automatic, const QString &why,
               WallpaperDecision &decision);
    void outlook(const Event &event, const WallpaperScene &scene, WallpaperDecision &decision) const;
    void failed(const Event &event, const WallpaperAnswer &answer, WallpaperDecision &decision);

    std::optional<WallpaperSettings> m_settings;
    QDateTime m_handled;                     // the due time whose image is set
    QDateTime m_tried;                       // the due time that was tried last
    qint64 m_startedAt = -1, m_retryAt = -1; // in ticks; -1 for none
    int m_failures = 0;                      // consecutive
    bool m_automatic = false;
    QString m_why, m_problem; // reason of the running change; last failure
};

} // namespace automation
