// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QSize>

#include <optional>

// Bitmaps as stored in icons: an info header whose height counts image and mask, the colour table, the pixels
// (XOR) and the 1-bit mask (AND), without a .bmp file header.
namespace icons
{

// Windows uses icons of up to 256 pixels; a few programs store larger ones.
inline constexpr int maxSide = 2048;

struct BitmapHeader {
    QSize size; // of the icon, without the mask
    int bits = 0;
    bool topDown = false;
    qint64 colourTable = 0;                                          // offset from the header
    qint64 colours = 0;                                              // number of entries, four bytes each
    qint64 pixels = 0;                                               // offset of the pixels
    quint32 redMask = 0, greenMask = 0, blueMask = 0, alphaMask = 0; // for 16 and 32 bits
};

// nullopt if it is not an icon bitmap: unknown header, compressed, or an invalid size.
std::optional<BitmapHeader> bitmapHeader(QByteArrayView bytes);

struct DecodedBitmap {
    QImage image; // Format_ARGB32
    int bits = 0; // per pixel, as in the header: 1, 4, 8, 16, 24 or 32
};

// nullopt if the header is invalid or pixels or mask are truncated. Uses the size in the header, not the
// directory's. Pixels with alpha use it; if all alpha values are 0, or there is no alpha, the mask is used.
// Masked pixels become 0.
std::optional<DecodedBitmap> decodeBitmap(QByteArrayView bytes);

} // namespace icons
