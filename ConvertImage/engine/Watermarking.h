// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QPoint>
#include <QRect>

#include <vector>

namespace conversion
{

enum class MarkKind { Text, Picture, Qr };

// A mark as it lies over the output.
struct PlacedMark {
    MarkKind kind = MarkKind::Text;
    QImage image;
    QRect place; // in pixels of the output; may reach beyond its edges
    int opacity = 100;
};

// What the marks need beside the settings.
struct MarkSources {
    QImage picture;      // of PictureMark::path; null: none, or not readable
    QString defaultFont; // for a text mark without a font
};

// The upper left corner of something of `mark` in `canvas`. The margin counts from the edges that the
// position names, so in the centre of a side it shifts nothing.
QPoint markCorner(const QSize &canvas, const QSize &mark, Position position, int margin);

// The QR code as black and white pixels, `size` pixels wide or the next smaller width at which a module is of
// whole pixels, and never less than one pixel a module; with its quiet zone of four modules. Null for a text
// that is too long for any code.
QImage qrPicture(const QString &text, int size);
// Pixels a module in such a picture; 0 without one.
int qrModulePixels(const QString &text, int size);

// In drawing order: text, picture, QR code. `dotsPerMeter` is that of the output and scales the text.
std::vector<PlacedMark> placedMarks(const QSize &canvas, int dotsPerMeter, const Watermarks &marks,
                                    const MarkSources &sources);

// Draws them. A picture that nothing is drawn into is returned as it is, with its colour table. Null when
// there is no memory for it.
QImage withMarks(const QImage &image, const std::vector<PlacedMark> &marks);

} // namespace conversion
