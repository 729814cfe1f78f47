// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/WallpaperJob.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace automation
{

namespace
{

constexpr qsizetype maxMonitors = 64;

int number(const QJsonObject &object, const QString &name, int limit)
{
    const int value = object.value(name).toInt(-1);
    return value >= 0 && value < limit ? value : 0;
}

QJsonObject objectOf(const QByteArray &bytes)
{
    return bytes.size() <= maxJobFileBytes ? QJsonDocument::fromJson(bytes).object() : QJsonObject();
}

QJsonObject imageObject(const ShownImage &picture)
{
    return {{QStringLiteral("key"), picture.key},
            {QStringLiteral("file"), picture.file},
            {QStringLiteral("thumbnail"), picture.thumbnail},
            {QStringLiteral("title"), picture.title},
            {QStringLiteral("credit"), picture.credit},
            {QStringLiteral("page"), picture.page.toString()}};
}

ShownImage shownPicture(const QJsonObject &object)
{
    ShownImage picture{object.value(QStringLiteral("key")).toString(),
                       object.value(QStringLiteral("file")).toString(),
                       object.value(QStringLiteral("thumbnail")).toString(),
                       plainLine(object.value(QStringLiteral("title")).toString()),
                       plainLine(object.value(QStringLiteral("credit")).toString(), 300),
                       {}};
    const QUrl page(object.value(QStringLiteral("page")).toString(), QUrl::StrictMode);
    if (isSecureAddress(page))
        picture.page = page;
    return picture;
}

} // namespace

QByteArray requestText(const WallpaperRequest &request)
{
    return QJsonDocument(QJsonObject{{QStringLiteral("restore"), request.restore},
                                     {QStringLiteral("source"), static_cast<int>(request.source)},
                                     {QStringLiteral("market"), request.market},
                                     {QStringLiteral("step"), static_cast<int>(request.step)},
                                     {QStringLiteral("automatic"), request.automatic},
                                     {QStringLiteral("index"), request.index},
                                     {QStringLiteral("newest"), request.newest},
                                     {QStringLiteral("own"), QJsonArray::fromStringList(request.own)},
                                     {QStringLiteral("perMonitor"), request.perMonitor},
                                     {QStringLiteral("onMetered"), request.onMetered}})
        .toJson(QJsonDocument::Compact);
}

std::optional<WallpaperRequest> parseRequest(const QByteArray &bytes)
{
    const QJsonObject object = objectOf(bytes);
    if (!object.contains(QStringLiteral("source")))
        return {};
    WallpaperRequest request;
    request.restore = object.value(QStringLiteral("restore")).toBool();
    request.source = static_cast<ImageSource>(number(object, QStringLiteral("source"), imageSources));
    request.market = object.value(QStringLiteral("market")).toString();
    request.step = static_cast<ImageStep>(number(object, QStringLiteral("step"), 4));
    request.automatic = object.value(QStringLiteral("automatic")).toBool();
    request.index = number(object, QStringLiteral("index"), maxOwnImages);
    request.newest = object.value(QStringLiteral("newest")).toString();
    for (const QJsonValue &path : object.value(QStringLiteral("own")).toArray())
        request.own.append(path.toString());
    request.perMonitor = object.value(QStringLiteral("perMonitor")).toBool();
    request.onMetered = object.value(QStringLiteral("onMetered")).toBool();
    return request;
}

QByteArray answerText(const WallpaperAnswer &answer)
{
    QJsonArray pictures;
    for (const ShownImage &picture : answer.pictures)
        pictures.append(imageObject(picture));
    return QJsonDocument(QJsonObject{{QStringLiteral("result"), static_cast<int>(answer.result)},
                                     {QStringLiteral("reason"), answer.reason},
                                     {QStringLiteral("index"), answer.index},
                                     {QStringLiteral("newest"), answer.newest},
                                     {QStringLiteral("time"), answer.time.toUTC().toString(Qt::ISODate)},
                                     {QStringLiteral("pictures"), pictures}})
        .toJson(QJsonDocument::Compact);
}

std::optional<WallpaperAnswer> parseAnswer(const QByteArray &bytes)
{
    const QJsonObject object = objectOf(bytes);
    const int result = object.value(QStringLiteral("result")).toInt(-1);
    if (result < 0 || result > static_cast<int>(WallpaperAnswer::Result::Failed))
        return {};
    WallpaperAnswer answer;
    answer.result = static_cast<WallpaperAnswer::Result>(result);
    answer.reason = plainLine(object.value(QStringLiteral("reason")).toString(), 300);
    answer.index = number(object, QStringLiteral("index"), maxOwnImages);
    answer.newest = object.value(QStringLiteral("newest")).toString();
    answer.time = QDateTime::fromString(object.value(QStringLiteral("time")).toString(), Qt::ISODate);
    for (const QJsonValue &picture : object.value(QStringLiteral("pictures")).toArray()) {
        if (answer.pictures.size() < maxMonitors)
            answer.pictures.append(shownPicture(picture.toObject()));
    }
    return answer;
}

int firstIndex(const WallpaperRequest &request, qsizetype count, const QString &newest)
{
    if (count <= 0)
        return -1;
    const int last = static_cast<int>(count) - 1;
    const bool isNew = request.automatic && !newest.isEmpty() && newest != request.newest;
    if (request.step == ImageStep::Newest || isNew || request.index < 0)
        return 0;
    if (request.step == ImageStep::Previous)
        return request.index == 0 || request.index > last ? last : request.index - 1;
    const int wanted = request.index + (request.step == ImageStep::Next ? 1 : 0);
    return wanted > last ? 0 : wanted;
}

int indexAfter(const WallpaperRequest &request, int index, qsizetype count)
{
    const int last = static_cast<int>(count) - 1;
    if (request.step == ImageStep::Previous)
        return index <= 0 ? last : index - 1;
    return index >= last ? 0 : index + 1;
}

} // namespace automation
