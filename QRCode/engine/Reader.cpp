// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Reader.h"

#include <QPainter>

#include <cstring>
#include <memory>
#include <zbar.h>

namespace qr
{

namespace
{

template <auto destroy>
struct Destroy {
    template <class T>
    void operator()(T *object) const
    {
        destroy(object);
    }
};
using Scanner = std::unique_ptr<zbar::zbar_image_scanner_t, Destroy<zbar::zbar_image_scanner_destroy>>;
using Picture = std::unique_ptr<zbar::zbar_image_t, Destroy<zbar::zbar_image_destroy>>;

QImage onWhite(const QImage &picture)
{
    if (!picture.hasAlphaChannel())
        return picture.convertToFormat(QImage::Format_Grayscale8);
    QImage flat(picture.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, picture);
    painter.end();
    return flat.convertToFormat(QImage::Format_Grayscale8);
}

// Copies the rows without their padding.
QByteArray pixels(const QImage &gray)
{
    QByteArray data(qsizetype(gray.width()) * gray.height(), Qt::Uninitialized);
    for (int y = 0; y < gray.height(); ++y) {
        std::memcpy(data.data() + qsizetype(y) * gray.width(), gray.constScanLine(y),
                    static_cast<std::size_t>(gray.width()));
    }
    return data;
}

bool readsGray(const QImage &gray, const QByteArray &text)
{
    const Scanner scanner(zbar::zbar_image_scanner_create());
    const Picture picture(zbar::zbar_image_create());
    if (!scanner || !picture)
        return false;
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_ENABLE, 1);
    // Returns raw bytes, since the decoder would otherwise guess the character set.
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_BINARY, 1);
    const QByteArray data = pixels(gray);
    zbar::zbar_image_set_format(picture.get(), zbar_fourcc('Y', '8', '0', '0'));
    zbar::zbar_image_set_size(picture.get(), static_cast<unsigned>(gray.width()),
                              static_cast<unsigned>(gray.height()));
    zbar::zbar_image_set_data(picture.get(), data.constData(), static_cast<unsigned long>(data.size()),
                              nullptr);
    if (zbar::zbar_scan_image(scanner.get(), picture.get()) < 1)
        return false;
    for (const auto *symbol = zbar::zbar_image_first_symbol(picture.get()); symbol;
         symbol = zbar::zbar_symbol_next(symbol)) {
        if (text == QByteArrayView(zbar::zbar_symbol_get_data(symbol),
                                   static_cast<qsizetype>(zbar::zbar_symbol_get_data_length(symbol))))
            return true;
    }
    return false;
}

} // namespace

bool reads(const QImage &picture, const QString &text, int pixelsPerModule)
{
    if (picture.isNull() || pixelsPerModule < 1)
        return false;
    const QByteArray bytes = text.toUtf8();
    const QImage gray = onWhite(picture);
    for (const int wanted : {pixelsPerModule, 4, 3}) {
        if (wanted > pixelsPerModule)
            continue;
        const int side = picture.width() * wanted / pixelsPerModule;
        if (readsGray(wanted == pixelsPerModule
                          ? gray
                          : gray.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
                      bytes))
            return true;
    }
    return false;
}

} // namespace qr
