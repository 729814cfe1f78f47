// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QString>

#include <array>

// The options of a conversion. Plain values: a job takes a copy, and never reads settings while it runs.
namespace conversion
{

// In the order of the format list; the number is stored.
enum class Target { Avif, Gif, Heic, Heif, Jpg, Jxl, Png, Tiff, Webp, Pdf };
inline constexpr int targetCount = 10;

enum class PaperSize { Letter, A4, A5, Legal, Executive };
inline constexpr int paperSizeCount = 5;

enum class ScaleMode { Percentage, Absolute, Relative };
enum class Side { Width, Height };

// Row by row: 0 is "Top - Left", 8 is "Bottom - Right".
enum class Position {
    TopLeft,
    TopCenter,
    TopRight,
    CenterLeft,
    Center,
    CenterRight,
    BottomLeft,
    BottomCenter,
    BottomRight
};
inline constexpr int positionCount = 9;

struct Resize {
    bool on = false;
    ScaleMode mode = ScaleMode::Percentage;
    int percentage = 100;
    int absoluteWidth = 1920;
    int absoluteHeight = 1080;
    Side relativeTo = Side::Width;
    int relativeWidth = 1920;
    int relativeHeight = 1080;

    bool operator==(const Resize &) const = default;
};

struct Adjustments {
    int contrast = 0;   // 259 is the largest useful value, and avoids a division by zero
    int brightness = 0; // added to each channel
    int gamma = 0;      // percent above 1.0; -100 disables the step
    bool sepia = false;
    int invertBelow = 0; // channels below it are inverted; 0 for none
    int blurRadius = 0;
    bool grayScale = false; // a separate step after the others

    // True if any colour step other than grey scale is active.
    bool changeColours() const
    {
        return sepia || contrast != 0 || brightness != 0 || gamma != 0 || invertBelow != 0 || blurRadius != 0;
    }
    bool operator==(const Adjustments &) const = default;
};

struct TextMark {
    QString content; // may have several lines; empty for no mark
    QString font;    // font family; empty for the application's
    int points = 12; // at the resolution stored in the output image
    QColor color = Qt::white;
    Position position = Position::BottomRight;
    int opacity = 100; // percent
    int margin = 0;    // output pixels, from the edges that the position names

    bool operator==(const TextMark &) const = default;
};

struct ImageMark {
    QString path;      // empty for no mark
    int percent = 100; // of the mark image's own size
    Position position = Position::BottomRight;
    int opacity = 100;
    int margin = 0;

    bool operator==(const ImageMark &) const = default;
};

struct QrMark {
    QString text;   // empty for no mark
    int size = 100; // pixels of the output, including the quiet zone; the code is the largest that fits
    Position position = Position::BottomRight;
    int margin = 0;

    bool operator==(const QrMark &) const = default;
};

struct Watermarks {
    TextMark text;
    ImageMark picture;
    QrMark qr;

    bool isEmpty() const { return text.content.isEmpty() && picture.path.isEmpty() && qr.text.isEmpty(); }
    bool operator==(const Watermarks &) const = default;
};

// Everything done to an image between reading and writing it.
struct Rendering {
    Resize resize;
    Adjustments adjustments;
    Watermarks marks;

    bool operator==(const Rendering &) const = default;
};

// How an image is encoded.
struct Encoding {
    static constexpr int ownChoice = -1; // the format's default quality

    Target target = Target::Avif;
    int jpgQuality = 95;
    int quality = ownChoice; // for other formats with a quality: 0 to 100
    bool lossless = false;   // if the format supports it
    bool keepMetadata = true;
    bool keepPlace = true; // if false, GPS data is removed from the metadata

    bool operator==(const Encoding &) const = default;
};

} // namespace conversion
