// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>
#include <span>

// The two image-of-the-day services: request addresses and parsing of their answers. Answers are untrusted;
// unusable entries are skipped.
namespace automation
{

enum class ImageSource { Bing, Nasa, Own };
inline constexpr int imageSources = 3;

// "Bing"; "Your pictures" for the user's own.
QString sourceName(ImageSource source);

// A region with its own Bing images. The first one leaves the choice to the service.
struct ImageRegion {
    const char *market; // "en-GB"
    const char *name;
};
std::span<const ImageRegion> imageRegions();

// Whether an address may be fetched: https, with a host name and without credentials. Tests pass their own
// rule to allow a local server.
using AllowedAddress = bool (*)(const QUrl &address);
bool isSecureAddress(const QUrl &address);

struct ImageServices {
    QUrl bing{QStringLiteral("https://www.bing.com/HPImageArchive.aspx")};
    QUrl nasa{QStringLiteral("https://api.nasa.gov/planetary/apod")};
    AllowedAddress allowed = isSecureAddress;
};

inline constexpr int maxDayImages = 8; // the first service offers no older ones
// The address that lists the newest images of a service. `today` in UTC. `market` as in imageRegions().
QUrl listingAddress(const ImageServices &services, ImageSource source, const QString &market,
                    const QDate &today);

struct DayImage {
    QString key; // unique over services and days; valid as a file name
    QString title;
    QString credit;        // may be empty
    QUrl page;             // https, or empty
    QList<QUrl> addresses; // in order of preference
    bool operator==(const DayImage &) const = default;
};

struct Listing {
    QList<DayImage> pictures; // newest first
    int videos = 0;           // days with a video instead of an image
};

inline constexpr qint64 maxListingBytes = 1 << 20;
// nullopt if the bytes are not a listing.
std::optional<Listing> parseListing(const ImageServices &services, ImageSource source,
                                    const QByteArray &bytes);

// The target of a redirect; nullopt if it must not be followed.
std::optional<QUrl> redirected(const QUrl &from, const QByteArray &location, AllowedAddress allowed);

// "jpg" or "png" by signature, whatever the server claims; empty for anything else.
QString imageSuffix(const QByteArray &bytes);

// A single line without control characters, of at most `length` characters.
QString plainLine(const QString &text, qsizetype length = 200);

} // namespace automation
