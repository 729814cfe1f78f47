// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Targets.h"

#include <algorithm>

namespace conversion
{

namespace
{

// name, extension, quality, lossless, alpha, profile, metadata, threaded
constexpr std::array<TargetFacts, targetCount> facts{{
    {"AVIF", ".avif", true, true, true, true, true, true},
    {"GIF", ".gif", false, false, false, false, false, false},
    {"HEIC", ".heic", true, true, true, true, true, true},
    {"HEIF", ".heif", true, true, true, true, true, true},
    {"JPG", ".jpg", true, false, false, true, true, false},
    {"JPEG XL", ".jxl", true, true, true, true, true, true},
    {"PNG", ".png", false, false, true, true, true, false},
    {"TIFF", ".tiff", false, false, true, true, true, false},
    {"WEBP", ".webp", true, true, true, true, true, false},
    {"PDF", ".pdf", false, false, true, false, false, false},
}};

constexpr std::array<const char *, positionCount> positions{
    "Top - Left",     "Top - Center",  "Top - Right",     "Center - Left", "Center - Center",
    "Center - Right", "Bottom - Left", "Bottom - Center", "Bottom - Right"};

constexpr std::array<const char *, paperSizeCount> papers{"Letter", "A4", "A5", "Legal", "Executive"};

} // namespace

const TargetFacts &factsOf(Target target)
{
    return facts[static_cast<std::size_t>(target)];
}

QByteArray writerFormat(Target target)
{
    return QByteArray(factsOf(target).extension).mid(1);
}

Target targetFromIndex(int index)
{
    return static_cast<Target>(std::clamp(index, 0, targetCount - 1));
}

Position positionFromIndex(int index)
{
    return index >= 0 && index < positionCount ? static_cast<Position>(index) : Position::BottomRight;
}

const char *positionName(Position position)
{
    return positions[static_cast<std::size_t>(position)];
}

const char *paperSizeName(PaperSize paperSize)
{
    return papers[static_cast<std::size_t>(paperSize)];
}

} // namespace conversion
