// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ImageOfDay.h"

#include <QDateTime>
#include <QStringList>

// The request of the agent to the wallpaper process and the answer: small JSON files (UTF-8) in a folder
// below the user's local application data.
namespace automation
{

// Which image, relative to the stored index. For a service the index is the age in days.
enum class ImageStep { Current, Newest, Next, Previous };

struct WallpaperRequest {
    bool restore = false; // only restore the user's wallpaper
    ImageSource source = ImageSource::Bing;
    QString market;
    ImageStep step = ImageStep::Newest;
    bool automatic = false; // not requested by the user: a new image takes precedence
    int index = 0;
    QString newest; // key of the newest image at the last request
    QStringList own;
    bool perMonitor = false;
    bool onMetered = false;

    bool operator==(const WallpaperRequest &) const = default;
};
QByteArray requestText(const WallpaperRequest &request);
std::optional<WallpaperRequest> parseRequest(const QByteArray &bytes);

// An image that is used as wallpaper.
struct ShownImage {
    QString key;
    QString file;      // a copy in the wallpaper folder; may have been deleted since
    QString thumbnail; // likewise
    QString title;
    QString credit;
    QUrl page; // https, or empty

    bool operator==(const ShownImage &) const = default;
};

struct WallpaperAnswer {
    enum class Result {
        Changed,
        Same, // the image is already set
        Restored,
        Metered, // the connection is metered
        Failed
    };

    Result result = Result::Failed;
    QString reason; // without a full stop: why it failed, or a remark on a success
    int index = 0;
    QString newest;
    QDateTime time;             // UTC
    QList<ShownImage> pictures; // one per monitor, or a single one for all

    bool operator==(const WallpaperAnswer &) const = default;
};
QByteArray answerText(const WallpaperAnswer &answer);
std::optional<WallpaperAnswer> parseAnswer(const QByteArray &bytes);

inline constexpr qint64 maxJobFileBytes = 1 << 20; // per request or answer
inline constexpr int maxOwnImages = 500;

// File names in the wallpaper folder.
inline QString wallpaperFolder(const QString &localAppData)
{
    return localAppData + QStringLiteral("\\Fernlight Larkspur\\Wallpaper");
}
inline constexpr QStringView requestFile = u"request.json";
inline constexpr QStringView answerFile = u"answer.json"; // from the last run
inline constexpr QStringView shownFile = u"shown.json";   // from the last run that changed something

// The index to start with among `count` images; -1 if there are none. An index past the end starts over.
int firstIndex(const WallpaperRequest &request, qsizetype count, const QString &newest);
// The next index to try if the image at an index is unusable.
int indexAfter(const WallpaperRequest &request, int index, qsizetype count);

} // namespace automation
