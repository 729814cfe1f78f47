// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/ImageWriter.h"

#include "ConvertImage/engine/GifWriter.h"
#include "ConvertImage/engine/ImageFormat.h"
#include "ConvertImage/engine/Render.h"
#include "ConvertImage/engine/Targets.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDebug>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace conversion
{

namespace
{

constexpr int losslessQuality = 100; // for all formats here that have both modes

QImage onWhite(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image;
    const bool deep = isDeep(image);
    QImage flat(image.size(), deep ? QImage::Format_RGBX64 : QImage::Format_RGB32);
    if (flat.isNull())
        return {};
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, image);
    painter.end();
    keepFacts(image, flat);
    return flat;
}

// A shallow copy without the source's text entries. Must not outlive `image`.
QImage withoutTexts(const QImage &image)
{
    QImage bare(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
    bare.setColorTable(image.colorTable());
    keepFacts(image, bare);
    return bare;
}

int qualityOf(const Encoding &encoding)
{
    const TargetFacts &facts = factsOf(encoding.target);
    if (encoding.target == Target::Jpg)
        return std::clamp(encoding.jpgQuality, 0, 100);
    if (facts.hasLossless && encoding.lossless)
        return losslessQuality;
    // One less: the writers treat the maximum as lossless.
    return facts.hasQuality ? std::min(encoding.quality, losslessQuality - 1) : Encoding::ownChoice;
}

QString writeWithQt(QIODevice &device, const QImage &image, const Encoding &encoding)
{
    QImageWriter writer(&device, writerFormat(encoding.target));
    if (const int quality = qualityOf(encoding); quality != Encoding::ownChoice)
        writer.setQuality(quality);
    constexpr int lzw = 1; // the TIFF writer's default is uncompressed
    if (encoding.target == Target::Tiff)
        writer.setCompression(lzw);
    writer.setOptimizedWrite(true);
    writer.setProgressiveScanWrite(true);
    return writer.write(image) ? QString() : writer.errorString();
}

// The note for the user if some metadata was lost; empty if nothing was.
QString lossText(const char *name, bool isCut, const QByteArray &found, const QByteArray &adapted,
                 const QByteArray &leftOut)
{
    if (isCut && found.isEmpty())
        return QCoreApplication::translate("conversion", "%1 was left out: it is too long")
            .arg(QLatin1StringView(name));
    if (!found.isEmpty() && adapted.isEmpty())
        return QCoreApplication::translate("conversion", "%1 was left out: it is damaged")
            .arg(QLatin1StringView(name));
    if (!leftOut.isEmpty())
        return QCoreApplication::translate("conversion", "%1 was left out: it is too long for this format")
            .arg(QLatin1StringView(name));
    if (isCut)
        return QCoreApplication::translate("conversion", "A part of %1 was left out: it is too long")
            .arg(QLatin1StringView(name));
    return {};
}

QString lossText(const Metadata &found, const Metadata &adapted, const Metadata &leftOut)
{
    QStringList notes{lossText("EXIF", found.isExifCut, found.exif, adapted.exif, leftOut.exif),
                      lossText("XMP", found.isXmpCut, found.xmp, adapted.xmp, leftOut.xmp)};
    notes.removeAll(QString());
    return notes.join(QStringLiteral(". "));
}

} // namespace

QImage preparedFor(Target target, const QImage &image)
{
    const TargetFacts &facts = factsOf(target);
    QImage prepared = facts.hasProfile ? image : inSrgb(image);
    if (!facts.hasAlpha)
        prepared = onWhite(prepared);
    return prepared;
}

WriteResult writePicture(QIODevice &device, const QImage &image, const Encoding &encoding,
                         const Metadata &metadata)
{
    const QImage prepared = preparedFor(encoding.target, image);
    if (prepared.isNull())
        return {problemText(RenderProblem::NoMemory), {}};
    if (encoding.target == Target::Gif)
        return {writeGif(device, prepared), {}};
    if (!encoding.keepMetadata)
        return {writeWithQt(device, withoutTexts(prepared), encoding), {}};
    if (!factsOf(encoding.target).hasMetadata)
        return {writeWithQt(device, prepared, encoding), {}};
    if (metadata.isEmpty())
        return {writeWithQt(device, prepared, encoding), lossText(metadata, {}, {})};
    QBuffer encoded;
    encoded.open(QIODevice::ReadWrite);
    if (const QString problem = writeWithQt(encoded, prepared, encoding); !problem.isEmpty())
        return {problem, {}};
    const Metadata adapted = adaptedMetadata(metadata, image.size(), encoding.keepPlace);
    const WithMetadata made = withMetadata(encoded.data(), encoding.target, adapted);
    if (const qint64 count = device.write(made.file); count != made.file.size()) {
        // A short write without an error means that the disk is full.
        const bool isFull = count >= 0;
        return {isFull ? QCoreApplication::translate("conversion", "The disk is full") : device.errorString(),
                {}};
    }
    return {{}, lossText(metadata, adapted, made.leftOut)};
}

QString checkWritten(QIODevice &device, Target target, const QSize &size)
{
    QImageReader reader(&device, writerFormat(target));
    QSize found = reader.size();
    if (found.isValid() && (reader.transformation() & QImageIOHandler::TransformationRotate90))
        found.transpose();
    if (found == size)
        return {};
    return found.isValid() ? QStringLiteral("The written file has another size than the picture")
                           : QStringLiteral("The written file cannot be read: ") + reader.errorString();
}

qint64 estimatedBytes(const QImage &image, const Encoding &encoding)
{
    // Encodes nine tiles spread over the image as a sample of the whole.
    constexpr qint64 pixelsEncodedWhole = 1 << 20;
    constexpr int tiles = 3;
    const qint64 pixels = qint64(image.width()) * image.height();
    QImage sample = image;
    if (pixels > pixelsEncodedWhole) {
        const double share = std::sqrt(double(pixelsEncodedWhole) / double(pixels)) / tiles;
        const int width = std::max(16, static_cast<int>(image.width() * share) & ~15);
        const int height = std::max(16, static_cast<int>(image.height() * share) & ~15);
        sample = QImage(width * tiles, height * tiles, image.format());
        sample.setColorTable(image.colorTable());
        const int bytes = width * image.depth() / 8;
        for (int y = 0; !sample.isNull() && y < sample.height(); ++y) {
            const int row = std::min((image.height() - height) * (y / height) / (tiles - 1) + y % height,
                                     image.height() - 1);
            for (int tile = 0; tile < tiles; ++tile) {
                const int column = std::max(0, (image.width() - width) * tile / (tiles - 1));
                std::copy_n(image.constScanLine(row) + qsizetype(column) * image.depth() / 8, bytes,
                            sample.scanLine(y) + qsizetype(tile) * bytes);
            }
        }
        keepFacts(image, sample);
    }
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    if (sample.isNull() || !writePicture(buffer, sample, encoding, {}).problem.isEmpty())
        return 0;
    const double scale = double(pixels) / (double(sample.width()) * sample.height());
    return static_cast<qint64>(double(buffer.size()) * scale);
}

} // namespace conversion
