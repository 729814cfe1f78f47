// SPDX-License-Identifier: GPL-3.0-or-later
// Conversions as the form runs them: conversion FOLDER OUTPUT EXTENSION [THREADS [QUALITY]] converts all
// pictures of a folder at half their size. conversion PICTURE: a preview after a slider moved, and the
// adjustments beside a plain loop.
#include "ConvertImage/ConvertImagesThread.h"
#include "ConvertImage/engine/Adjustments.h"
#include "ConvertImage/engine/Targets.h"
#include "ConvertImage/preview/PreviewRenderer.h"
#include "bench/Bench.h"
#include "imaging/DecoderPool.h"

#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>

#include <windows.h>

#include <psapi.h>

#include <cmath>

namespace
{

constexpr int rounds = 9;
constexpr double megabyte = 1 << 20;

std::shared_ptr<imaging::DecoderPool> makeDecoders()
{
    return std::make_shared<imaging::DecoderPool>(
        imaging::DecoderPool::Options{imaging::DecoderPool::decoderProgram()});
}

conversion::Target targetOf(const QString &extension)
{
    int index = 0;
    while (index + 1 < conversion::targetCount &&
           QLatin1StringView(conversion::factsOf(conversion::targetFromIndex(index)).extension) != extension)
        ++index;
    return conversion::targetFromIndex(index);
}

void convertFolder(const QString &folder, const QString &output, const QString &extension, int threads,
                   int quality)
{
    ConversionJob job;
    job.options.encoding.target = targetOf(extension);
    job.options.encoding.quality = quality;
    if (quality >= 0)
        job.options.encoding.jpgQuality = quality;
    job.options.rendering.resize = {.on = true, .percentage = 50};
    job.options.threads = threads;
    job.options.overwriteAll = true;
    job.outputFolder = output;
    job.decoders = makeDecoders();
    QStringList sources;
    for (const QString &name : QDir(folder).entryList(QDir::Files, QDir::Name))
        sources.append(folder + u'\\' + name);
    if (job.options.encoding.target == conversion::Target::Pdf) {
        for (const QString &source : sources)
            job.files.push_back({source, output + QStringLiteral("\\all.pdf")});
    } else {
        job.files = conversion::plannedFiles(sources, output, extension);
    }
    ConvertImagesThread thread(std::move(job));
    QEventLoop loop;
    QObject::connect(&thread, &ConvertImagesThread::finish, &loop, &QEventLoop::quit);
    const double seconds = bench::seconds([&] {
        thread.start();
        loop.exec();
    });
    double bytes = 0;
    int written = 0;
    for (const conversion::FileResult &result : thread.takeResults()) {
        bytes += double(result.outputBytes);
        written += result.outcome == conversion::Outcome::Written ? 1 : 0;
    }
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    bench::report("written", written);
    bench::report("seconds", seconds);
    bench::report("megabytes", bytes / megabyte);
    bench::report("peak of this process, MB", double(memory.PeakWorkingSetSize) / megabyte);
}

// From the wish to the picture that the view gets, with another contrast each time.
void previews(const QString &picture)
{
    PreviewRenderer renderer(makeDecoders());
    QEventLoop loop;
    QObject::connect(&renderer, &PreviewRenderer::rendered, &loop, &QEventLoop::quit);
    PreviewWish wish;
    wish.path = picture;
    wish.encoding.target = conversion::Target::Pdf; // no estimate of the size beside it
    wish.area = {420, 360};
    std::vector<double> times;
    for (int round = 0; round <= rounds; ++round) {
        wish.rendering.adjustments.contrast = round;
        times.push_back(bench::seconds([&] {
            renderer.render(wish);
            loop.exec();
        }));
    }
    times.erase(times.begin()); // the first one decodes
    bench::report("preview after a slider moved, ms", 1000 * bench::median(times));
}

// The steps as they are defined, pixel by pixel.
void plainAdjustment(QImage &image, const conversion::Adjustments &wish)
{
    const double factor = (wish.contrast + 255.0) * 259.0 / ((259.0 - wish.contrast) * 255.0);
    const double power = 100.0 / (wish.gamma + 100.0);
    const auto channel = [&](int value) {
        double x = (value - 128.0) * factor + 128.0 + wish.brightness;
        x = std::pow(std::max(x, 0.0) / 255.0, power) * 255.0;
        return static_cast<int>(std::clamp(x, 0.0, 255.0));
    };
    for (int y = 0; y < image.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            row[x] =
                qRgba(channel(qRed(row[x])), channel(qGreen(row[x])), channel(qBlue(row[x])), qAlpha(row[x]));
    }
}

void adjustments(const QString &picture)
{
    const QImage image = QImage(picture).convertToFormat(QImage::Format_RGB32);
    const conversion::Adjustments wish{.contrast = 30, .brightness = 10, .gamma = 20};
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        QImage plain = image.copy();
        const double slow = bench::seconds([&] { plainAdjustment(plain, wish); });
        const double fast = bench::seconds([&] { conversion::adjusted(image, wish); });
        ratios.push_back(slow / fast);
    }
    bench::report("adjustments: times as fast as the plain loop", bench::median(ratios));
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() == 2) {
        adjustments(arguments[1]);
        previews(arguments[1]);
    } else if (arguments.size() > 3) {
        convertFolder(arguments[1], arguments[2], arguments[3],
                      arguments.value(4, QStringLiteral("2")).toInt(),
                      arguments.value(5, QStringLiteral("-1")).toInt());
    }
    return 0;
}
