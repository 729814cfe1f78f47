// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Reduction.h"
#include "tests/imaging/engine/BlockPicture.h"

#include <QColor>
#include <QImage>

#include <cstdlib>
#include <random>
#include <vector>

namespace tests
{

// Fingerprint and similarity as they are stated, on lists of integers, one position after the other.
struct PlainFingerprint {
    std::vector<qint32> red, green, blue;
    quint32 redMean = 0, greenMean = 0, blueMean = 0;

    static PlainFingerprint of(const QImage &image)
    {
        const QImage thumbnail = image.width() > image.height()
                                     ? image.scaledToHeight(128, Qt::FastTransformation)
                                     : image.scaledToWidth(128, Qt::FastTransformation);
        const QImage small = thumbnail.scaled(40, 40, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                                 .convertToFormat(QImage::Format_RGB32);
        PlainFingerprint result;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x) {
                const QColor pixel = small.pixelColor(x, y);
                const float r = static_cast<float>(pixel.red() * 0.299);
                const float g = static_cast<float>(pixel.green() * 0.587);
                const float b = static_cast<float>(pixel.blue() * 0.114);
                result.red.push_back(static_cast<qint32>(r));
                result.green.push_back(static_cast<qint32>(g));
                result.blue.push_back(static_cast<qint32>(b));
            }
        }
        result.computeMeans();
        return result;
    }

    void computeMeans()
    {
        quint32 redSum = 0, greenSum = 0, blueSum = 0;
        for (std::size_t i = 0; i < red.size(); ++i) {
            redSum += static_cast<quint32>(red[i]);
            greenSum += static_cast<quint32>(green[i]);
            blueSum += static_cast<quint32>(blue[i]);
        }
        redMean = redSum / 1600;
        greenMean = greenSum / 1600;
        blueMean = blueSum / 1600;
    }

    // `*this` is the later picture, `e` the earlier one.
    int differingFrom(const PlainFingerprint &e) const
    {
        const auto dR = static_cast<qint32>(e.redMean - redMean);
        const auto dG = static_cast<qint32>(e.greenMean - greenMean);
        const auto dB = static_cast<qint32>(e.blueMean - blueMean);
        int differing = 0;
        for (std::size_t i = 0; i < red.size(); ++i) {
            const qint32 a = red[i] - e.red[i] + dR;
            const qint32 b = green[i] - e.green[i] + dG;
            const qint32 c = blue[i] - e.blue[i] + dB;
            if (std::abs(a) + std::abs(b) + std::abs(c) >= 63)
                ++differing;
        }
        return differing;
    }
    bool alike(const PlainFingerprint &e) const { return differingFrom(e) < 15; }
};

inline lookalikes::Fingerprint compact(const PlainFingerprint &plain)
{
    const std::vector<quint8> red(plain.red.begin(), plain.red.end()),
        green(plain.green.begin(), plain.green.end()), blue(plain.blue.begin(), plain.blue.end());
    using Plane = lookalikes::Fingerprint::Plane;
    return lookalikes::Fingerprint(Plane(red), Plane(green), Plane(blue));
}

// What the scan keeps of a decoded picture.
inline std::optional<lookalikes::ExaminedImage> reduceImage(const QImage &image)
{
    std::optional<imaging::Examination> examination = imaging::examine({image, {}});
    return examination ? std::optional(lookalikes::examinedImage(std::move(*examination))) : std::nullopt;
}

} // namespace tests
