// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/GifWriter.h"

#include <QDebug>

#include <gif_lib.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace conversion
{

namespace
{

constexpr int maxSide = 65535; // 16 bits in the file

struct MapFree {
    void operator()(ColorMapObject *map) const { GifFreeMapObject(map); }
};
using ColorMap = std::unique_ptr<ColorMapObject, MapFree>;

struct FileClose {
    void operator()(GifFileType *file) const { EGifCloseFile(file, nullptr); }
};
using GifFile = std::unique_ptr<GifFileType, FileClose>;

int writeBytes(GifFileType *file, const GifByteType *bytes, int length)
{
    auto *device = static_cast<QIODevice *>(file->UserData);
    return static_cast<int>(device->write(reinterpret_cast<const char *>(bytes), length));
}

// Monochrome and Indexed8 images keep their colour table. Monochrome pixels are packed bits and must be
// expanded to indices.
QImage indexed(const QImage &image)
{
    return image.convertToFormat(QImage::Format_Indexed8);
}

ColorMap colorMapOf(const QImage &image)
{
    const int used = static_cast<int>(image.colorCount());
    ColorMap map(GifMakeMapObject(1 << GifBitSize(used), nullptr)); // zero-initialised, that is black
    for (int i = 0; map && i < used; ++i) {
        const QRgb color = image.color(i);
        map->Colors[i] = {static_cast<GifByteType>(qRed(color)), static_cast<GifByteType>(qGreen(color)),
                          static_cast<GifByteType>(qBlue(color))};
    }
    return map;
}

QString reason(int code)
{
    const char *text = GifErrorString(code);
    return text ? QString::fromLatin1(text) : QStringLiteral("GIF error %1").arg(code);
}

QString writeRows(GifFileType *file, const QImage &image)
{
    const auto largest = static_cast<uchar>(image.colorCount() - 1);
    std::vector<GifPixelType> row(static_cast<std::size_t>(image.width()));
    for (int y = 0; y < image.height(); ++y) {
        const uchar *indexes = image.constScanLine(y);
        for (std::size_t x = 0; x < row.size(); ++x)
            row[x] = std::min(indexes[x], largest);
        if (EGifPutLine(file, row.data(), image.width()) == GIF_ERROR)
            return reason(file->Error);
    }
    return {};
}

} // namespace

QString writeGif(QIODevice &device, const QImage &image)
{
    if (image.isNull() || image.width() > maxSide || image.height() > maxSide) {
        qDebug() << "Gif writing error" << image.height() << image.width();
        return QStringLiteral("A GIF has 1 to 65535 pixels a side");
    }
    const QImage pixels = indexed(image);
    const ColorMap map = pixels.isNull() ? nullptr : colorMapOf(pixels);
    int error = E_GIF_ERR_NOT_ENOUGH_MEM;
    GifFile file(map ? EGifOpen(&device, writeBytes, &error) : nullptr);
    if (!file)
        return reason(error);
    EGifSetGifVersion(file.get(), true);
    if (EGifPutScreenDesc(file.get(), pixels.width(), pixels.height(), map->ColorCount, 0, map.get()) ==
            GIF_ERROR ||
        EGifPutImageDesc(file.get(), 0, 0, pixels.width(), pixels.height(), false, map.get()) == GIF_ERROR) {
        qDebug() << "Gif writing error" << image.height() << image.width();
        return reason(file->Error);
    }
    const QString problem = writeRows(file.get(), pixels);
    const bool closed = EGifCloseFile(file.release(), &error) != GIF_ERROR;
    return !problem.isEmpty() ? problem : closed ? QString() : reason(error);
}

} // namespace conversion
