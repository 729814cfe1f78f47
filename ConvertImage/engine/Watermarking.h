// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QPoint>
#include <QRect>

#include <vector>

namespace conversion
{

enum class MarkKind { Text, Picture, Qr };

// A mark and its position in the output.
struct PlacedMark {
    MarkKind kind = MarkKind::Text;
    QImage image;
    QRect place; // output pixels; may reach beyond the edges
    int opacity = 100;
};

// What the marks need in addition to the settings.
struct MarkSources {
    QImage picture;      // for ImageMark::path; null if there is none or it cannot be read
    QString defaultFont; // for a text mark without its own font
};

// The upper left corner for something of size `mark` in `canvas`. The margin applies to the edges that the
// position names, so it does not move a mark in the centre of a side.
QPoint markCorner(const QSize &canvas, const QSize &mark, Position position, int margin);

// The QR code in black and white with its quiet zone of four modules: `size` pixels wide, or the next smaller
// width with a whole number of pixels per module, at least one. Null if the text is too long for a QR code.
QImage qrImage(const QString &text, int size);
// Pixels per module in such an image; 0 without one.
int qrModulePixels(const QString &text, int size);

// In drawing order: text, image, QR code. `dotsPerMeter` is that of the output and scales the text.
std::vector<PlacedMark> placedMarks(const QSize &canvas, int dotsPerMeter, const Watermarks &marks,
                                    const MarkSources &sources);

// Draws the marks. Without marks the image is returned unchanged, with its colour table. Null if out of
// memory.
QImage withMarks(const QImage &image, const std::vector<PlacedMark> &marks);

} // namespace conversion
