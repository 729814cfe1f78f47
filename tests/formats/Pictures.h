// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QTest>

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>

// Pictures for the tests of the image formats, on their way through QImageWriter and QImageReader.

// No symmetry, smooth areas and hard edges.
inline QImage picture(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(40 + 180 * x / size.width(), 60 + 160 * y / size.height(), 90));
    }
    QPainter painter(&image);
    painter.fillRect(0, 0, size.width() / 3, size.height() / 4, Qt::red);
    painter.setBrush(Qt::yellow);
    painter.drawEllipse(QRect(size.width() / 2, size.height() / 2, size.width() / 3, size.height() / 3));
    painter.end();
    return image.convertToFormat(format);
}

struct Difference {
    double mean = INFINITY; // of a channel, 0 to 255
    int worst = 255;
};

inline Difference difference(const QImage &first, const QImage &second)
{
    if (first.size() != second.size() || first.isNull())
        return {};
    const QImage a = first.convertToFormat(QImage::Format_ARGB32);
    const QImage b = second.convertToFormat(QImage::Format_ARGB32);
    qint64 sum = 0;
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto *p = a.constScanLine(y);
        const auto *q = b.constScanLine(y);
        for (int i = 0; i < 4 * a.width(); ++i) {
            sum += std::abs(p[i] - q[i]);
            worst = std::max(worst, std::abs(p[i] - q[i]));
        }
    }
    return {double(sum) / (4.0 * a.width() * a.height()), worst};
}

inline QByteArray
encoded(const QImage &image, const QByteArray &format, int quality = -1,
        QImageIOHandler::Transformation transformation = QImageIOHandler::TransformationNone)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setTransformation(transformation);
    return writer.write(image) ? buffer.data() : QByteArray();
}

inline QImage decoded(QByteArray content)
{
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    return reader.read();
}

// Of this process so far, in bytes.
inline quint64 peakMemory()
{
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof counters;
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return std::max<quint64>(counters.PeakPagefileUsage, counters.PeakWorkingSetSize);
}

inline void formatRows(std::initializer_list<const char *> formats)
{
    QTest::addColumn<QByteArray>("format");
    for (const char *format : formats)
        QTest::newRow(format) << QByteArray(format);
}

#define VERIFY_NEAR(actual, expected, mean_)                                                                 \
    do {                                                                                                     \
        const double mean = difference(actual, expected).mean;                                               \
        QVERIFY2(mean < (mean_), qPrintable(QString::number(mean)));                                         \
    } while (false)
