// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QSize>

#include <optional>

// The bitmaps of icons: an info header whose height counts the pixels and the mask, the colour table, the
// pixels (XOR) and the 1-bit mask (AND), without the header of a .bmp file.
namespace icons
{

// An icon's side is 256 pixels at most where Windows looks; a few programs store larger ones.
inline constexpr int maxSide = 2048;

struct BitmapHeader {
    QSize size; // of the icon: the mask is not counted
    int bits = 0;
    bool topDown = false;
    qint64 colourTable = 0; // where it begins, in bytes from the header
    qint64 colours = 0;     // its entries, four bytes each
    qint64 pixels = 0;      // where the pixels begin
    quint32 redMask = 0, greenMask = 0, blueMask = 0, alphaMask = 0; // of 16 and 32 bits
};

// Empty for what is no bitmap of an icon: another header, compressed, no or too large a size.
std::optional<BitmapHeader> bitmapHeader(QByteArrayView bytes);

struct DecodedBitmap {
    QImage image; // Format_ARGB32
    int bits = 0; // a pixel, as the header says: 1, 4, 8, 16, 24 or 32
};

// Empty when the header is not one or the pixels or the mask are not whole. The header's size counts, and
// not that of the directory. Pixels with alpha are as opaque as they say; where all of them say 0, the mask
// counts, as it does for pixels without. What the mask hides is 0.
std::optional<DecodedBitmap> decodeBitmap(QByteArrayView bytes);

} // namespace icons
