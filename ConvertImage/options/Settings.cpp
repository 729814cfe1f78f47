// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/options/Settings.h"

namespace conversion
{

namespace
{

// Named values, validated.
class Values
{
public:
    explicit Values(const QVariantMap &values) : m_values(values) {}

    qint32 operator()(const settings::Number &number) const
    {
        bool isNumber = false;
        const qint32 value = m_values.value(number.name.toString()).toInt(&isNumber);
        return isNumber ? number.usable(value) : number.fallback;
    }
    bool operator()(const settings::Flag &flag) const
    {
        return m_values.value(flag.name.toString(), flag.fallback).toBool();
    }
    QString operator()(const settings::Text &text) const
    {
        return m_values.value(text.name.toString(), text.fallback.toString()).toString();
    }
    template <class Enumeration>
    Enumeration as(const settings::Number &number) const
    {
        return static_cast<Enumeration>((*this)(number));
    }

private:
    const QVariantMap &m_values;
};

Resize resizeFrom(const Values &value)
{
    return {.on = value(stored::scaleImage),
            .mode = value.as<ScaleMode>(stored::scaleType),
            .percentage = value(stored::scalePercentage),
            .absoluteWidth = value(stored::scaleAbsoluteWidth),
            .absoluteHeight = value(stored::scaleAbsoluteHeight),
            .relativeTo = value.as<Side>(stored::scaleRelativeTo),
            .relativeWidth = value(stored::scaleRelativeWidth),
            .relativeHeight = value(stored::scaleRelativeHeight)};
}

Adjustments adjustmentsFrom(const Values &value)
{
    return {.contrast = value(stored::adjustContrast),
            .brightness = value(stored::adjustBrightness),
            .gamma = value(stored::adjustGamma),
            .sepia = value(stored::adjustSepia),
            .invertBelow = value(stored::adjustInvertColours),
            .blurRadius = value(stored::setBlurRadius),
            .grayScale = value(stored::adjustGrayScale)};
}

Watermarks marksFrom(const Values &value)
{
    const QColor color(value(stored::textColor));
    return {.text = {.content = value(stored::textContent),
                     .font = value(stored::textFont),
                     .points = value(stored::textSize),
                     .color = color.isValid() ? color : QColor(stored::textColor.fallback),
                     .position = value.as<Position>(stored::textPosition),
                     .opacity = value(stored::textOpacity),
                     .margin = value(stored::textMargin)},
            .picture = {.path = value(stored::imagePath),
                        .percent = value(stored::imageSize),
                        .position = value.as<Position>(stored::imagePosition),
                        .opacity = value(stored::imageOpacity),
                        .margin = value(stored::imageMargin)},
            .qr = {.text = value(stored::qrCodeText),
                   .size = value(stored::qrCodeSize),
                   .position = value.as<Position>(stored::qrCodePosition),
                   .margin = value(stored::qrCodeMargin)}};
}

} // namespace

Settings settingsFrom(const QVariantMap &values)
{
    const Values value(values);
    return {.rendering = {resizeFrom(value), adjustmentsFrom(value), marksFrom(value)},
            .encoding = {.target = value.as<Target>(stored::targetFileType),
                         .jpgQuality = value(stored::targetFileQuality),
                         .quality = value(stored::otherQuality),
                         .lossless = value(stored::lossless),
                         .keepMetadata = value(stored::keepMetadata),
                         .keepPlace = value(stored::keepPlace)},
            .paper = value.as<PaperSize>(stored::pdfPaperSize),
            .outputFolder = value(stored::outputFolder),
            .pdfFileName = value(stored::pdfFileName),
            .besideSource = value(stored::besideSource),
            .keepTimes = value(stored::keepTimes),
            .withSubfolders = value(stored::withSubfolders),
            .keepFolders = value(stored::keepFolders)};
}

QVariantMap withoutPlaces(QVariantMap values)
{
    for (const QStringView name :
         {stored::outputFolder.name, stored::pdfFileName.name, stored::withSubfolders.name})
        values.remove(name.toString());
    return values;
}

} // namespace conversion
