// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/DevicePosition.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QEventLoop>
#include <QGeoPositionInfoSource>
#include <QTimer>

#include <memory>

namespace automation
{

namespace
{

constexpr int maxWait = 30'000; // ms
constexpr int poll = 100;       // ms

} // namespace

DevicePosition askWindowsForPosition(const core::CancelFlag &cancel)
{
    DevicePosition answer{.position = {}, .failure = DevicePosition::Failure::NotKnown};
    const std::unique_ptr<QGeoPositionInfoSource> source(
        QGeoPositionInfoSource::createDefaultSource(nullptr));
    if (!source) {
        qDebug("No source of positions is installed");
        return answer;
    }
    QEventLoop loop;
    bool answered = false; // may be set before the loop runs
    const auto end = [&] {
        answered = true;
        loop.quit();
    };
    QObject::connect(source.get(), &QGeoPositionInfoSource::positionUpdated, &loop,
                     [&](const QGeoPositionInfo &found) {
                         const QGeoCoordinate place = found.coordinate();
                         if (!place.isValid())
                             return;
                         answer = {.position = Position{place.latitude(), place.longitude()}};
                         end();
                     });
    QObject::connect(source.get(), &QGeoPositionInfoSource::errorOccurred, &loop,
                     [&](QGeoPositionInfoSource::Error error) {
                         qDebug() << "Windows tells no position:" << error;
                         if (error == QGeoPositionInfoSource::AccessError)
                             answer.failure = DevicePosition::Failure::NotAllowed;
                         end();
                     });
    QTimer watch;
    const QDeadlineTimer deadline(maxWait);
    QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
        if (cancel.isSet() || deadline.hasExpired())
            loop.quit();
    });
    watch.start(poll);
    source->requestUpdate();
    if (!answered)
        loop.exec();
    // An unanswered request must be stopped, or Windows would call a deleted source. After an answer it has
    // already ended.
    if (!answered)
        source->stopUpdates();
    return answer;
}

} // namespace automation
