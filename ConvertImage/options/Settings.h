// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QString>
#include <QStringList>

#include <vector>

// What the converter keeps in the registry, below settings::keys::convertImage. Each value has one line in a
// table, by which it is read, checked, written, put into a set of settings, and bound to its control.
// Interface thread.
namespace conversion
{

struct Settings {
    Rendering rendering;
    Encoding encoding;
    PaperSize paper = PaperSize::Letter;
    QString outputFolder;
    QString pdfFileName;
    bool besideSource = false;
    bool keepTimes = false;
    bool withSubfolders = true; // of a folder that is added
    bool keepFolders = false;   // outputs lie in the output folder as the sources do in such a folder

    bool operator==(const Settings &) const = default;
};

// A number, a flag or an index of a list. `minimum` and `maximum` are also those of its control.
struct NumberValue {
    QStringView name;
    int fallback;
    int minimum;
    int maximum;
    int (*get)(const Settings &);
    void (*set)(Settings &, int);
};
struct TextValue {
    QStringView name;
    QString (*get)(const Settings &);
    void (*set)(Settings &, const QString &);
};
const std::vector<NumberValue> &numberValues();
const std::vector<TextValue> &textValues();
const NumberValue &numberValue(QStringView name); // which must be one of them
const TextValue &textValue(QStringView name);

Settings loadSettings();
// Writes the values in which the two differ.
void saveChanges(const Settings &before, const Settings &after);

// Sets of settings by name: all but the folders, files and texts of a run's place.
QStringList presetNames();
bool savePreset(const QString &name, const Settings &settings);
// `settings` with what the set says; false when there is none of that name.
bool loadPreset(const QString &name, Settings &settings);
void removePreset(const QString &name);
inline constexpr int maxPresets = 100;

} // namespace conversion
