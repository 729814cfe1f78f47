// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"
#include "settings/Keys.h"
#include "settings/NamedSets.h"
#include "settings/Values.h"

// The converter's registry values, and the conversion settings made from them. The value names are the stored
// format, with this very spelling.
namespace conversion
{

namespace stored
{

using settings::Flag;
using settings::Number;
using settings::Text;

inline constexpr QStringView key = settings::keys::convertImage;
inline constexpr qint32 maxPixels = 100'000; // for a side, an offset or a margin

inline constexpr Number targetFileType{key, u"targeFileType", 0,
                                       0,   targetCount - 1,  Number::Outside::Nearest};
inline constexpr Number targetFileQuality{key, u"targeFileQuality", 95, 0, 100};
inline constexpr Number otherQuality{key, u"otherQuality", Encoding::ownChoice, Encoding::ownChoice, 99};
inline constexpr Flag lossless{key, u"lossless"};
inline constexpr Flag keepMetadata{key, u"keepMetadata", true};
inline constexpr Flag keepPlace{key, u"keepPlace", true};
inline constexpr Flag keepTimes{key, u"keepTimes"};
inline constexpr Text outputFolder{key, u"OutputFolder"};
inline constexpr Flag besideSource{key, u"besideSource"};
inline constexpr Flag withSubfolders{key, u"withSubfolders", true};
inline constexpr Flag keepFolders{key, u"keepFolders"};
inline constexpr Text pdfFileName{key, u"pdfFileName"};
inline constexpr Number pdfPaperSize{key, u"pdfPaperSize", 0, 0, paperSizeCount - 1};

inline constexpr Flag scaleImage{key, u"scaleImage"};
inline constexpr Number scaleType{key, u"scaleType", 0, 0, 2};
inline constexpr Number scalePercentage{key, u"scalePercentage", 100, 1, 10'000};
inline constexpr Number scaleAbsoluteWidth{key, u"scaleAbsoluteWitdh", 1920, 1, maxPixels};
inline constexpr Number scaleAbsoluteHeight{key, u"scaleAbsoluteHeight", 1080, 1, maxPixels};
inline constexpr Number scaleRelativeTo{key, u"scaleRelativeTo", 0, 0, 1};
inline constexpr Number scaleRelativeWidth{key, u"scaleRelativeWidth", 1920, 1, maxPixels};
inline constexpr Number scaleRelativeHeight{key, u"scaleRelativeHeight", 1080, 1, maxPixels};

inline constexpr qint32 lastPosition = positionCount - 1;
inline constexpr Text textContent{key, u"textContent"};
inline constexpr Text textFont{key, u"textFont"};
inline constexpr Number textSize{key, u"textSize", 12, 1, 2000};
inline constexpr Text textColor{key, u"textColor", u"#ffffff"}; // "#rrggbb"
inline constexpr Number textPosition{key, u"textPosition", lastPosition, 0, lastPosition};
inline constexpr Number textOpacity{key, u"textOpacity", 100, 0, 100};
inline constexpr Number textMargin{key, u"textMargin", 0, 0, maxPixels};
inline constexpr Text imagePath{key, u"imagePath"};
inline constexpr Number imageSize{key, u"imageSize", 100, 1, 1000};
inline constexpr Number imagePosition{key, u"imagePosition", lastPosition, 0, lastPosition};
inline constexpr Number imageOpacity{key, u"imageOpacity", 100, 0, 100};
inline constexpr Number imageMargin{key, u"imageMargin", 0, 0, maxPixels};
inline constexpr Text qrCodeText{key, u"qrCodeText"};
inline constexpr Number qrCodeSize{key, u"qrCodeSize", 100, 1, 20'000};
inline constexpr Number qrCodePosition{key, u"qrCodePosition", lastPosition, 0, lastPosition};
inline constexpr Number qrCodeMargin{key, u"qrCodeMargin", 0, 0, maxPixels};

inline constexpr Flag adjustGrayScale{key, u"adjustGrayScale", false, true};
inline constexpr Flag adjustSepia{key, u"adjustSepia", false, true};
inline constexpr Number adjustContrast{key, u"adjustContrast", 0, -255, 259};
inline constexpr Number adjustBrightness{key, u"adjustBrightness", 0, -255, 255};
inline constexpr Number adjustGamma{key, u"adjustGamma", 0, -200, 400};
inline constexpr Number adjustInvertColours{key, u"adjustInvertColours", 0, 0, 256};
inline constexpr Number setBlurRadius{key, u"setBlurRadius", 0, 0, 200};

inline constexpr settings::TextList presets{key, u"preset", u"presetCount", 100};

} // namespace stored

struct Settings {
    Rendering rendering;
    Encoding encoding;
    PaperSize paper = PaperSize::Letter;
    QString outputFolder;
    QString pdfFileName;
    bool besideSource = false;
    bool keepTimes = false;
    bool withSubfolders = true; // of added folders
    bool keepFolders = false;   // outputs keep the folder structure of added folders

    bool operator==(const Settings &) const = default;
};

// From the states of the controls, by value name. Missing or invalid values get the default.
Settings settingsFrom(const QVariantMap &values);

// The values that can go into a preset: without those of a single run (its folders and its document).
QVariantMap withoutPlaces(QVariantMap values);

} // namespace conversion
