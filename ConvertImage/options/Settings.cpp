// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/options/Settings.h"

#include "ConvertImage/engine/Targets.h"
#include "settings/Keys.h"
#include "settings/Settings.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace conversion
{

namespace
{

constexpr QStringView key = settings::keys::convertImage;
constexpr QStringView presetCount = u"presetCount";
constexpr QStringView preset = u"preset";
constexpr int maxPixels = 100'000; // of a side, an offset or a margin

template <auto Member>
constexpr NumberValue number(QStringView name, int fallback, int minimum, int maximum)
{
    return {
        name,
        fallback,
        minimum,
        maximum,
        [](const Settings &settings) { return static_cast<int>(Member(const_cast<Settings &>(settings))); },
        [](Settings &settings, int value) {
            auto &field = Member(settings);
            field = static_cast<std::remove_reference_t<decltype(field)>>(value);
        }};
}

// A lambda that names a field.
#define FIELD(path)                                                                                          \
    [](Settings & s) -> auto &                                                                               \
    {                                                                                                        \
        return s.path;                                                                                       \
    }

std::vector<NumberValue> positionValues()
{
    return {number<FIELD(rendering.marks.text.position)>(u"textPosition", 8, 0, 8),
            number<FIELD(rendering.marks.picture.position)>(u"imagePosition", 8, 0, 8),
            number<FIELD(rendering.marks.qr.position)>(u"qrCodePosition", 8, 0, 8)};
}

std::vector<NumberValue> makeNumberValues()
{
    std::vector<NumberValue> values{
        number<FIELD(encoding.target)>(u"targeFileType", 0, 0, targetCount - 1),
        number<FIELD(encoding.jpgQuality)>(u"targeFileQuality", 95, 0, 100),
        number<FIELD(encoding.quality)>(u"otherQuality", Encoding::ownChoice, Encoding::ownChoice, 99),
        number<FIELD(encoding.lossless)>(u"lossless", 0, 0, 1),
        number<FIELD(encoding.keepMetadata)>(u"keepMetadata", 1, 0, 1),
        number<FIELD(encoding.keepPlace)>(u"keepPlace", 1, 0, 1),
        number<FIELD(keepTimes)>(u"keepTimes", 0, 0, 1),
        number<FIELD(besideSource)>(u"besideSource", 0, 0, 1),
        number<FIELD(withSubfolders)>(u"withSubfolders", 1, 0, 1),
        number<FIELD(keepFolders)>(u"keepFolders", 0, 0, 1),
        number<FIELD(paper)>(u"pdfPaperSize", 0, 0, paperSizeCount - 1),
        number<FIELD(rendering.resize.on)>(u"scaleImage", 0, 0, 1),
        number<FIELD(rendering.resize.mode)>(u"scaleType", 0, 0, 2),
        number<FIELD(rendering.resize.percentage)>(u"scalePercentage", 100, 1, 10'000),
        number<FIELD(rendering.resize.absoluteWidth)>(u"scaleAbsoluteWitdh", 1920, 1, maxPixels),
        number<FIELD(rendering.resize.absoluteHeight)>(u"scaleAbsoluteHeight", 1080, 1, maxPixels),
        number<FIELD(rendering.resize.relativeTo)>(u"scaleRelativeTo", 0, 0, 1),
        number<FIELD(rendering.resize.relativeWidth)>(u"scaleRelativeWidth", 1920, 1, maxPixels),
        number<FIELD(rendering.resize.relativeHeight)>(u"scaleRelativeHeight", 1080, 1, maxPixels),
        number<FIELD(rendering.marks.text.points)>(u"textSize", 12, 1, 2000),
        number<FIELD(rendering.marks.text.opacity)>(u"textOpacity", 100, 0, 100),
        number<FIELD(rendering.marks.text.margin)>(u"textMargin", 0, 0, maxPixels),
        number<FIELD(rendering.marks.picture.percent)>(u"imageSize", 100, 1, 1000),
        number<FIELD(rendering.marks.picture.opacity)>(u"imageOpacity", 100, 0, 100),
        number<FIELD(rendering.marks.picture.margin)>(u"imageMargin", 0, 0, maxPixels),
        number<FIELD(rendering.marks.qr.size)>(u"qrCodeSize", 100, 1, 20'000),
        number<FIELD(rendering.marks.qr.margin)>(u"qrCodeMargin", 0, 0, maxPixels),
        number<FIELD(rendering.adjustments.contrast)>(u"adjustContrast", 0, -255, 259),
        number<FIELD(rendering.adjustments.brightness)>(u"adjustBrightness", 0, -255, 255),
        number<FIELD(rendering.adjustments.gamma)>(u"adjustGamma", 0, -200, 400),
        number<FIELD(rendering.adjustments.invertBelow)>(u"adjustInvertColours", 0, 0, 256),
        number<FIELD(rendering.adjustments.blurRadius)>(u"setBlurRadius", 0, 0, 200)};
    std::ranges::copy(positionValues(), std::back_inserter(values));
    // 1 is on; any other number is not.
    values.push_back(number<FIELD(rendering.adjustments.grayScale)>(u"adjustGrayScale", 0, 0, 1));
    values.push_back(number<FIELD(rendering.adjustments.sepia)>(u"adjustSepia", 0, 0, 1));
    return values;
}

template <auto Member>
constexpr TextValue text(QStringView name)
{
    return {name,
            [](const Settings &settings) -> QString { return Member(const_cast<Settings &>(settings)); },
            [](Settings &settings, const QString &value) { Member(settings) = value; }};
}

// "#rrggbb". Another text keeps the colour that there is.
TextValue colorValue()
{
    return {u"textColor", [](const Settings &settings) { return settings.rendering.marks.text.color.name(); },
            [](Settings &settings, const QString &value) {
                if (const QColor color(value); color.isValid())
                    settings.rendering.marks.text.color = color;
            }};
}

std::vector<TextValue> makeTextValues()
{
    return {text<FIELD(outputFolder)>(u"OutputFolder"),
            text<FIELD(pdfFileName)>(u"pdfFileName"),
            text<FIELD(rendering.marks.text.content)>(u"textContent"),
            text<FIELD(rendering.marks.text.font)>(u"textFont"),
            colorValue(),
            text<FIELD(rendering.marks.picture.path)>(u"imagePath"),
            text<FIELD(rendering.marks.qr.text)>(u"qrCodeText")};
}

#undef FIELD

bool isOfTheRun(QStringView name)
{
    return name == u"OutputFolder" || name == u"pdfFileName" || name == u"withSubfolders";
}

// A stored number as signed. The format has rules of its own; a flag is any number but 0, except for those of
// which only 1 counts.
int usable(const NumberValue &value, qint32 stored)
{
    if (value.name == u"targeFileType")
        return static_cast<int>(targetFromIndex(stored));
    if (value.name == u"scaleImage")
        return stored != 0;
    return stored >= value.minimum && stored <= value.maximum ? stored : value.fallback;
}

QJsonObject toJson(const QString &name, const Settings &held)
{
    QJsonObject object{{QStringLiteral("name"), name}};
    for (const NumberValue &value : numberValues()) {
        if (!isOfTheRun(value.name))
            object.insert(value.name, value.get(held));
    }
    for (const TextValue &value : textValues()) {
        if (!isOfTheRun(value.name))
            object.insert(value.name, value.get(held));
    }
    return object;
}

std::vector<QJsonObject> presets()
{
    const int count = settings::dwordInRange(key, presetCount, 0, 0, maxPresets);
    std::vector<QJsonObject> found;
    for (int index = 0; index < count; ++index) {
        QString stored;
        settings::readString(key, settings::numbered(preset, index), stored);
        const QJsonObject object = QJsonDocument::fromJson(stored.toUtf8()).object();
        if (!object.value(u"name").toString().isEmpty())
            found.push_back(object);
    }
    return found;
}

void storePresets(const std::vector<QJsonObject> &all)
{
    int index = 0;
    for (const QJsonObject &object : all)
        settings::writeString(key, settings::numbered(preset, index++),
                              QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    settings::writeDword(key, presetCount, static_cast<quint32>(index));
    while (index <= maxPresets && settings::deleteValue(key, settings::numbered(preset, index)))
        ++index;
}

auto named(const QString &name)
{
    return [name](const QJsonObject &object) { return object.value(u"name").toString() == name; };
}

} // namespace

const std::vector<NumberValue> &numberValues()
{
    static const std::vector<NumberValue> values = makeNumberValues();
    return values;
}

const std::vector<TextValue> &textValues()
{
    static const std::vector<TextValue> values = makeTextValues();
    return values;
}

const NumberValue &numberValue(QStringView name)
{
    return *std::ranges::find(numberValues(), name, &NumberValue::name);
}

const TextValue &textValue(QStringView name)
{
    return *std::ranges::find(textValues(), name, &TextValue::name);
}

Settings loadSettings()
{
    Settings held;
    for (const NumberValue &value : numberValues()) {
        auto stored = static_cast<quint32>(value.fallback);
        settings::readDword(key, value.name, stored);
        value.set(held, usable(value, static_cast<qint32>(stored)));
    }
    for (const TextValue &value : textValues()) {
        QString stored;
        if (settings::readString(key, value.name, stored))
            value.set(held, stored);
    }
    return held;
}

void saveChanges(const Settings &before, const Settings &after)
{
    for (const NumberValue &value : numberValues()) {
        if (value.get(before) != value.get(after))
            settings::writeDword(key, value.name, static_cast<quint32>(value.get(after)));
    }
    for (const TextValue &value : textValues()) {
        if (value.get(before) != value.get(after))
            settings::writeString(key, value.name, value.get(after));
    }
}

QStringList presetNames()
{
    QStringList names;
    for (const QJsonObject &object : presets())
        names.append(object.value(u"name").toString());
    names.sort(Qt::CaseInsensitive);
    return names;
}

bool savePreset(const QString &name, const Settings &held)
{
    std::vector<QJsonObject> all = presets();
    std::erase_if(all, named(name));
    if (name.isEmpty() || all.size() >= static_cast<std::size_t>(maxPresets))
        return false;
    all.push_back(toJson(name, held));
    storePresets(all);
    return true;
}

bool loadPreset(const QString &name, Settings &held)
{
    const std::vector<QJsonObject> all = presets();
    const auto found = std::ranges::find_if(all, named(name));
    if (found == all.end())
        return false;
    for (const NumberValue &value : numberValues()) {
        if (!isOfTheRun(value.name) && found->contains(value.name))
            value.set(held, usable(value, found->value(value.name).toInt(value.fallback)));
    }
    for (const TextValue &value : textValues()) {
        if (!isOfTheRun(value.name) && found->contains(value.name))
            value.set(held, found->value(value.name).toString());
    }
    return true;
}

void removePreset(const QString &name)
{
    std::vector<QJsonObject> all = presets();
    std::erase_if(all, named(name));
    storePresets(all);
}

} // namespace conversion
