// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/ImageOfDay.h"

#include "automation/engine/Texts.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

#include <algorithm>
#include <array>

namespace automation
{

namespace
{

constexpr qsizetype creditLength = 300;
constexpr qsizetype maxAddressLength = 2000;

// The public demo key of the service: thirty requests per hour, fifty per day.
const QString nasaKey = QStringLiteral("DEMO_KEY");
const QString nasaPages = QStringLiteral("https://apod.nasa.gov/apod/");

constexpr std::array regions{
    ImageRegion{"", "Chosen by the service"},
    ImageRegion{"en-AU", "Australia"},
    ImageRegion{"pt-BR", "Brazil"},
    ImageRegion{"en-CA", "Canada"},
    ImageRegion{"fr-CA", "Canada (French)"},
    ImageRegion{"zh-CN", "China"},
    ImageRegion{"fr-FR", "France"},
    ImageRegion{"de-DE", "Germany"},
    ImageRegion{"en-IN", "India"},
    ImageRegion{"it-IT", "Italy"},
    ImageRegion{"ja-JP", "Japan"},
    ImageRegion{"es-ES", "Spain"},
    ImageRegion{"en-GB", "United Kingdom"},
    ImageRegion{"en-US", "United States"},
};

QString textOf(const QJsonObject &object, QLatin1StringView name)
{
    return object.value(name).toString();
}

void addAddress(QList<QUrl> &to, const QUrl &base, const QString &text, AllowedAddress allowed)
{
    if (text.isEmpty() || text.size() > maxAddressLength)
        return;
    const QUrl address = base.resolved(QUrl(text, QUrl::StrictMode));
    if (allowed(address) && !to.contains(address))
        to.append(address);
}

QString shortHash(const QString &text)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).left(6).toHex());
}

std::optional<DayImage> bingImage(const ImageServices &services, const QJsonObject &entry)
{
    const QDate day =
        QDate::fromString(textOf(entry, QLatin1StringView("startdate")), QStringLiteral("yyyyMMdd"));
    const QString base = textOf(entry, QLatin1StringView("urlbase"));
    DayImage picture;
    if (!base.isEmpty())
        addAddress(picture.addresses, services.bing, base + QStringLiteral("_UHD.jpg"), services.allowed);
    addAddress(picture.addresses, services.bing, textOf(entry, QLatin1StringView("url")), services.allowed);
    if (!day.isValid() || picture.addresses.isEmpty())
        return {};
    picture.key =
        QStringLiteral("bing-%1-%2")
            .arg(day.toString(QStringLiteral("yyyyMMdd")),
                 shortHash(picture.addresses[0].toString(QUrl::RemoveScheme | QUrl::RemoveAuthority)));
    picture.credit = plainLine(textOf(entry, QLatin1StringView("copyright")), creditLength);
    picture.title = plainLine(textOf(entry, QLatin1StringView("title")));
    if (picture.title.isEmpty() || picture.title == QLatin1StringView("Info")) // in regions without titles
        picture.title = picture.credit.section(QStringLiteral(" (\u00a9"), 0, 0);
    if (picture.title.isEmpty())
        picture.title = tr("Picture of %1").arg(day.toString(Qt::ISODate));
    const QUrl page(textOf(entry, QLatin1StringView("copyrightlink")), QUrl::StrictMode);
    if (isSecureAddress(page))
        picture.page = page;
    return picture;
}

Listing bingListing(const ImageServices &services, const QJsonArray &entries)
{
    Listing listing;
    for (const QJsonValue &entry : entries) {
        if (listing.pictures.size() == maxDayImages)
            break;
        if (const auto picture = bingImage(services, entry.toObject()))
            listing.pictures.append(*picture);
    }
    return listing;
}

std::optional<DayImage> nasaImage(const ImageServices &services, const QJsonObject &entry, const QDate &day)
{
    DayImage picture;
    for (const QLatin1StringView name : {QLatin1StringView("hdurl"), QLatin1StringView("url")})
        addAddress(picture.addresses, services.nasa, textOf(entry, name), services.allowed);
    if (picture.addresses.isEmpty())
        return {};
    picture.key = QStringLiteral("nasa-%1").arg(day.toString(QStringLiteral("yyyyMMdd")));
    picture.title = plainLine(textOf(entry, QLatin1StringView("title")));
    if (picture.title.isEmpty())
        picture.title = tr("Picture of %1").arg(day.toString(Qt::ISODate));
    picture.credit = plainLine(textOf(entry, QLatin1StringView("copyright")), creditLength);
    picture.page = QUrl(nasaPages + QStringLiteral("ap%1.html").arg(day.toString(QStringLiteral("yyMMdd"))));
    return picture;
}

Listing nasaListing(const ImageServices &services, const QJsonArray &entries)
{
    Listing listing;
    for (const QJsonValue &value : entries) {
        const QJsonObject entry = value.toObject();
        const QDate day = QDate::fromString(textOf(entry, QLatin1StringView("date")), Qt::ISODate);
        if (!day.isValid())
            continue;
        const QString type = textOf(entry, QLatin1StringView("media_type"));
        const auto picture =
            type == QLatin1StringView("image") ? nasaImage(services, entry, day) : std::optional<DayImage>();
        if (picture)
            listing.pictures.append(*picture);
        else
            ++listing.videos;
    }
    std::stable_sort(listing.pictures.begin(), listing.pictures.end(),
                     [](const DayImage &left, const DayImage &right) { return left.key > right.key; });
    listing.pictures.resize(std::min<qsizetype>(listing.pictures.size(), maxDayImages));
    return listing;
}

} // namespace

QString sourceName(ImageSource source)
{
    switch (source) {
    case ImageSource::Bing:
        return QStringLiteral("Bing");
    case ImageSource::Nasa:
        return QStringLiteral("NASA");
    case ImageSource::Own:
        break;
    }
    return tr("Your pictures");
}

std::span<const ImageRegion> imageRegions()
{
    return regions;
}

bool isSecureAddress(const QUrl &address)
{
    return address.isValid() && address.scheme() == QLatin1StringView("https") && !address.host().isEmpty() &&
           address.userInfo().isEmpty();
}

QUrl listingAddress(const ImageServices &services, ImageSource source, const QString &market,
                    const QDate &today)
{
    QUrlQuery query;
    if (source == ImageSource::Bing) {
        query.addQueryItem(QStringLiteral("format"), QStringLiteral("js"));
        query.addQueryItem(QStringLiteral("idx"), QStringLiteral("0"));
        query.addQueryItem(QStringLiteral("n"), QString::number(maxDayImages));
        if (!market.isEmpty())
            query.addQueryItem(QStringLiteral("mkt"), market);
    } else {
        // Sends no end date, which would be rejected before that day has begun in America. Requests more days
        // than needed, since some have a video instead.
        query.addQueryItem(QStringLiteral("api_key"), nasaKey);
        query.addQueryItem(QStringLiteral("start_date"),
                           today.addDays(-maxDayImages - 2).toString(Qt::ISODate));
    }
    QUrl address = source == ImageSource::Bing ? services.bing : services.nasa;
    address.setQuery(query);
    return address;
}

std::optional<Listing> parseListing(const ImageServices &services, ImageSource source,
                                    const QByteArray &bytes)
{
    if (bytes.size() > maxListingBytes)
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (source == ImageSource::Bing) {
        const QJsonValue images = document.object().value(QLatin1StringView("images"));
        return images.isArray() ? std::optional(bingListing(services, images.toArray())) : std::nullopt;
    }
    if (!document.isArray() && !document.object().contains(QLatin1StringView("date")))
        return {};
    return nasaListing(services, document.isArray() ? document.array() : QJsonArray{document.object()});
}

std::optional<QUrl> redirected(const QUrl &from, const QByteArray &location, AllowedAddress allowed)
{
    if (location.isEmpty() || location.size() > maxAddressLength)
        return {};
    const QUrl to = from.resolved(QUrl::fromEncoded(location, QUrl::StrictMode));
    return allowed(to) ? std::optional(to) : std::nullopt;
}

QString imageSuffix(const QByteArray &bytes)
{
    if (bytes.startsWith("\xff\xd8\xff"))
        return QStringLiteral("jpg");
    if (bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return QStringLiteral("png");
    return {};
}

QString plainLine(const QString &text, qsizetype length)
{
    QString line;
    for (const QChar character : text) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control)
            line.append(u' ');
        else if (category != QChar::Other_Format) // could reverse the direction of the following text
            line.append(character);
    }
    line = line.simplified();
    if (line.size() <= length)
        return line;
    line.truncate(length - 1);
    if (line.back().isHighSurrogate())
        line.chop(1);
    return line + u'\u2026';
}

} // namespace automation
