// SPDX-License-Identifier: GPL-3.0-or-later
// The design of a code. The enumerator values are stored.
#pragma once

#include "core/QrEncoder.h"

#include <QColor>
#include <QImage>

namespace qr
{

enum class Fill { Solid, Horizontal, Vertical, Diagonal, Radial };
enum class BodyShape { Squares, Rounded, Dots, Diamonds, HorizontalBars, VerticalBars };
// For the frames and centres of the three finder patterns.
enum class EyeShape { Square, Rounded, Circle, Leaf };
enum class BackShape { Square, Rounded, Circle };

struct Logo {
    QImage image;      // null for none
    int size = 20;     // its longer side, in percent of the code's side
    bool back = true;  // a plain area behind it without modules
    int backSize = 10; // how far it extends beyond the logo, in percent of the logo's longer side
    BackShape backShape = BackShape::Rounded;
};

struct Style {
    core::QrCorrection correction = core::QrCorrection::Medium;
    int imageSize = 600;            // side of exported images, in pixels
    int margin = core::qrQuietZone; // in modules
    Fill fill = Fill::Solid;
    QColor color = Qt::black;
    QColor color2 = QColor(0x0F, 0x5B, 0xB5); // second colour of a gradient
    QColor background = Qt::white;
    bool transparent = false; // no background
    BodyShape body = BodyShape::Squares;
    EyeShape eyeFrame = EyeShape::Square;
    EyeShape eyeCentre = EyeShape::Square;
    Logo logo;
};

inline constexpr int minImageSize = 100;
inline constexpr int maxImageSize = 4000;
inline constexpr int maxMargin = 20;
inline constexpr int minLogoSize = 5;
inline constexpr int maxLogoSize = 35;
inline constexpr int maxLogoBackSize = 50;

} // namespace qr
