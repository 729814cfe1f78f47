// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/PictureOfDay.h"

#include <QDateTime>
#include <QStringList>

// What the agent asks of the process that changes the wallpaper, and what that answers: small files in one
// folder of the user's local application data, JSON in UTF-8.
namespace automation
{

// Which picture, counted from the one of the stored index. For a service that is the age in days.
enum class PictureStep { Current, Newest, Next, Previous };

struct WallpaperRequest {
    bool restore = false; // what was there before, and nothing else
    PictureSource source = PictureSource::Bing;
    QString market;
    PictureStep step = PictureStep::Newest;
    bool automatic = false; // nobody asked for it: a picture that is new goes first
    int index = 0;
    QString newest; // key of the newest picture when it was last asked
    QStringList own;
    bool perMonitor = false;
    bool onMetered = false;

    bool operator==(const WallpaperRequest &) const = default;
};
QByteArray requestText(const WallpaperRequest &request);
std::optional<WallpaperRequest> parseRequest(const QByteArray &bytes);

// A picture that is on the desktop.
struct ShownPicture {
    QString key;
    QString file;      // a copy in the wallpaper folder; it may have gone since
    QString thumbnail; // the same
    QString title;
    QString credit;
    QUrl page; // https, or empty

    bool operator==(const ShownPicture &) const = default;
};

struct WallpaperAnswer {
    enum class Result {
        Changed,
        Same, // the picture is on the desktop already
        Restored,
        Metered, // the connection is paid by volume
        Failed
    };

    Result result = Result::Failed;
    QString reason; // a sentence without a full stop; why it failed, or what to know of a change
    int index = 0;
    QString newest;
    QDateTime time;               // UTC
    QList<ShownPicture> pictures; // one of each monitor; one alone stands for all

    bool operator==(const WallpaperAnswer &) const = default;
};
QByteArray answerText(const WallpaperAnswer &answer);
std::optional<WallpaperAnswer> parseAnswer(const QByteArray &bytes);

inline constexpr qint64 maxJobFileBytes = 1 << 20; // of a request or an answer
inline constexpr int maxOwnPictures = 500;

// Names in the wallpaper folder.
inline QString wallpaperFolder(const QString &localAppData)
{
    return localAppData + QStringLiteral("\\Fernlight Larkspur\\Wallpaper");
}
inline constexpr QStringView requestFile = u"request.json";
inline constexpr QStringView answerFile = u"answer.json"; // of the last run
inline constexpr QStringView shownFile = u"shown.json";   // the answer of the last change

// The index to begin with among `count` pictures; -1 when there are none. An index past the end begins anew.
int firstIndex(const WallpaperRequest &request, qsizetype count, const QString &newest);
// The one to go on with when the picture of an index is of no use.
int indexAfter(const WallpaperRequest &request, int index, qsizetype count);

} // namespace automation
