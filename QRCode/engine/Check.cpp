// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Check.h"

#include "QRCode/engine/Reader.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace qr
{

namespace
{

// Below these values phone readers become unreliable; from our own tests with the decoder and recommendations
// of print shops.
constexpr double enoughContrast = 3.0;
constexpr int enoughPixels = 3; // per module
constexpr int wellCovered = 25; // percent of the code's side

double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QList<QColor> inks(const Style &style)
{
    return style.fill == Fill::Solid ? QList{style.color} : QList{style.color, style.color2};
}

QColor paper(const Style &style)
{
    return style.transparent ? QColor(Qt::white) : style.background;
}

int logoReach(const Logo &logo)
{
    if (logo.image.isNull())
        return 0;
    return logo.back ? logo.size * (100 + 2 * logo.backSize) / 100 : logo.size;
}

bool isPlain(const Style &style)
{
    return style.body == BodyShape::Squares && style.eyeFrame == EyeShape::Square &&
           style.eyeCentre == EyeShape::Square;
}

bool isSuspect(const Drawing &drawing, Reason reason)
{
    const Style &style = drawing.style();
    const QList<QColor> colors = inks(style);
    switch (reason) {
    case Reason::LightOnDark:
        return std::ranges::any_of(
            colors, [&](const QColor &ink) { return luminance(ink) > luminance(paper(style)); });
    case Reason::Contrast:
        return std::ranges::any_of(
            colors, [&](const QColor &ink) { return contrast(ink, paper(style)) < enoughContrast; });
    case Reason::Logo:
        return logoReach(style.logo) > wellCovered;
    case Reason::Margin:
        return style.margin < core::qrQuietZone;
    case Reason::Shapes:
        return !isPlain(style);
    case Reason::TooSmall:
        return drawing.pixelsPerModule(style.imageSize) < enoughPixels;
    case Reason::SeeThrough:
        return style.transparent;
    case Reason::Unknown:
        break;
    }
    return false;
}

// The style with one possible cause removed.
Style cured(const Drawing &drawing, Reason reason)
{
    Style style = drawing.style();
    switch (reason) {
    case Reason::LightOnDark:
    case Reason::Contrast:
        style.fill = Fill::Solid;
        style.color = Qt::black;
        style.background = Qt::white;
        break;
    case Reason::Logo:
        style.logo = {};
        break;
    case Reason::Margin:
        style.margin = core::qrQuietZone;
        break;
    case Reason::Shapes:
        style.body = BodyShape::Squares;
        style.eyeFrame = style.eyeCentre = EyeShape::Square;
        break;
    case Reason::TooSmall:
        style.imageSize = drawing.side() * (enoughPixels + 1);
        break;
    case Reason::SeeThrough:
    case Reason::Unknown:
        break;
    }
    return style;
}

bool scans(const Drawing &drawing, const QString &text)
{
    return reads(drawing.image(), text, drawing.pixelsPerModule(drawing.style().imageSize));
}

// For a drawing that does not scan: the single changes after which it would.
QList<Reason> reasonsAgainst(const Drawing &drawing, const QString &text)
{
    QList<Reason> suspects;
    for (const Reason reason : {Reason::TooSmall, Reason::LightOnDark, Reason::Contrast, Reason::Logo,
                                Reason::Margin, Reason::Shapes}) {
        const bool present =
            reason == Reason::Logo ? !drawing.style().logo.image.isNull() : isSuspect(drawing, reason);
        if (!present)
            continue;
        if (scans(Drawing(drawing.matrix(), cured(drawing, reason)), text))
            return {reason};
        suspects.append(reason);
    }
    return suspects.isEmpty() ? QList{Reason::Unknown} : suspects;
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

Verdict check(const Drawing &drawing, const QImage &picture, const QString &text)
{
    if (!reads(picture, text, drawing.pixelsPerModule(picture.width())))
        return {false, reasonsAgainst(drawing, text)};
    Verdict verdict{true, {}};
    for (const Reason reason :
         {Reason::Contrast, Reason::Logo, Reason::Margin, Reason::TooSmall, Reason::SeeThrough}) {
        if (isSuspect(drawing, reason))
            verdict.reasons.append(reason);
    }
    return verdict;
}

QString reasonText(Reason reason)
{
    const auto tr = [](const char *text) { return QCoreApplication::translate("QRCodeCheck", text); };
    switch (reason) {
    case Reason::LightOnDark:
        return tr("The code is lighter than its background. Most readers expect a dark code on a light one.");
    case Reason::Contrast:
        return tr("A colour of the code is too close to that of the background.");
    case Reason::Logo:
        return tr("The logo covers too much. Make it smaller or choose a higher error correction.");
    case Reason::Margin:
        return tr("The margin is narrow. Readers ask for 4 modules of quiet zone.");
    case Reason::Shapes:
        return tr("The shapes are too far from plain squares for so dense a code.");
    case Reason::TooSmall:
        return tr("The modules are very small. Make the picture larger or the text shorter.");
    case Reason::SeeThrough:
        return tr("Without a background it scans on light surfaces alone.");
    case Reason::Unknown:
        break;
    }
    return tr("The reason is not known. A shorter text or plain shapes may help.");
}

} // namespace qr
