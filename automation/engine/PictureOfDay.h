// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>
#include <span>

// The two services that publish a picture a day: where to ask, and what they answer. Answers are bytes from
// outside; what of them is not usable is left out.
namespace automation
{

enum class PictureSource { Bing, Nasa, Own };
inline constexpr int pictureSources = 3;

// "Bing"; of the user's own pictures "Your pictures".
QString sourceName(PictureSource source);

// Where the pictures of Bing differ. The first leaves the choice to the service.
struct PictureRegion {
    const char *market; // "en-GB"
    const char *name;
};
std::span<const PictureRegion> pictureRegions();

// Whether an address may be fetched: https to a named host and without a password. Tests hand in a rule of
// their own, which lets their server through.
using AllowedAddress = bool (*)(const QUrl &address);
bool isSecureAddress(const QUrl &address);

struct PictureServices {
    QUrl bing{QStringLiteral("https://www.bing.com/HPImageArchive.aspx")};
    QUrl nasa{QStringLiteral("https://api.nasa.gov/planetary/apod")};
    AllowedAddress allowed = isSecureAddress;
};

inline constexpr int maxDayPictures = 8; // as many as the first service goes back
// The address that lists the newest pictures of a service. `today`: in UTC. `market`: as in pictureRegions().
QUrl listingAddress(const PictureServices &services, PictureSource source, const QString &market,
                    const QDate &today);

struct DayPicture {
    QString key; // names a picture of all services and days; usable in a file name
    QString title;
    QString credit;        // may be empty
    QUrl page;             // https, may be empty
    QList<QUrl> addresses; // the best one first
    bool operator==(const DayPicture &) const = default;
};

struct Listing {
    QList<DayPicture> pictures; // newest first
    int videos = 0;             // days with something else than a picture
};

inline constexpr qint64 maxListingBytes = 1 << 20;
// Nothing when the bytes are no listing at all.
std::optional<Listing> parseListing(const PictureServices &services, PictureSource source,
                                    const QByteArray &bytes);

// Where a redirection leads; nothing where it must not be followed.
std::optional<QUrl> redirected(const QUrl &from, const QByteArray &location, AllowedAddress allowed);

// "jpg" or "png" by the first bytes, whatever the server says; empty for all else.
QString pictureSuffix(const QByteArray &bytes);

// One line without control characters and of at most `length` characters.
QString plainLine(const QString &text, qsizetype length = 200);

} // namespace automation
