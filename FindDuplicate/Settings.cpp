// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/Settings.h"

#include "settings/FileTypeStore.h"
#include "settings/Settings.h"

#include <algorithm>
#include <numeric>

namespace duplicates
{

namespace
{

constexpr QStringView key = settings::keys::findDuplicate;

// With its stored index, which its flag uses too: damaged entries before it are skipped.
struct StoredType {
    int index;
    CustomFileType type;
};

std::vector<StoredType> loadCustomTypes()
{
    quint32 count = 0;
    settings::readDword(key, customFileTypeCount, count);
    std::vector<StoredType> types;
    const int last = static_cast<int>(std::min(count, maxCustomFileTypes));
    for (int index = 0; index < last; ++index) {
        QString stored;
        if (!settings::readString(key, settings::numbered(customFileType, index), stored))
            continue;
        if (auto type = parseStoredCustomFileType(stored))
            types.push_back({index, *std::move(type)});
    }
    return types;
}

bool saveCustomTypes(const std::vector<CustomFileType> &types)
{
    const int count = static_cast<int>(std::min<std::size_t>(types.size(), maxCustomFileTypes));
    bool stored = settings::writeDword(key, customFileTypeCount, static_cast<quint32>(count));
    for (int index = 0; stored && index < count; ++index)
        stored = settings::writeString(key, settings::numbered(customFileType, index),
                                       types[static_cast<std::size_t>(index)].storedText());
    if (!stored)
        return false;
    // Deletes leftovers of an earlier, longer list; the same for the flags below.
    for (int index = count; settings::deleteValue(key, settings::numbered(customFileType, index)); ++index)
        ;
    return true;
}

std::optional<quint32> storedFlag(int category)
{
    quint32 flag = 0;
    return settings::readDword(key, QString::number(category), flag) ? std::optional(flag) : std::nullopt;
}

// The built-in categories in their order, as flags are stored by index, with the user's extensions.
core::FileTypeTable namedCategories()
{
    core::FileTypeTable named = core::defaultFileTypes();
    for (const core::FileTypeCategory &edited : settings::loadFileTypesOrDefaults()) {
        const auto known =
            std::find_if(named.begin(), named.end(), [&edited](const core::FileTypeCategory &category) {
                return category.name == edited.name;
            });
        if (known != named.end())
            known->extensions = edited.extensions;
    }
    return named;
}

} // namespace

FinderSettings defaultFinderSettings()
{
    FinderSettings held;
    held.categories = categorySelection(namedCategories(), {});
    return held;
}

void reloadFinderSettings(FinderSettings &held)
{
    const core::FileTypeTable named = namedCategories();
    const bool stored = settings::keyExists(key);
    std::vector<int> flags; // storage index by category
    if (stored) {
        flags.resize(named.size());
        std::iota(flags.begin(), flags.end(), 0);
        held.customTypes.clear();
        for (StoredType &custom : loadCustomTypes()) {
            flags.push_back(static_cast<int>(named.size()) + custom.index);
            held.customTypes.push_back(std::move(custom.type));
        }
    }
    CategorySelection categories = categorySelection(named, held.customTypes);
    for (std::size_t i = 0; i < categories.size(); ++i) {
        if (stored)
            categories[i].selected = isSelectedByStoredFlag(storedFlag(flags[i]));
        else if (i < held.categories.size())
            categories[i].selected = held.categories[i].selected;
    }
    held.categories = std::move(categories);
    if (!stored)
        return;
    held.ignoreSmallFile = ignoreSmallFileValue.read();
    held.smallFileSize = smallFileSizeValue.read();
}

bool saveFinderSettings(const FinderSettings &changed)
{
    bool stored = saveCustomTypes(changed.customTypes) &&
                  ignoreSmallFileValue.write(changed.ignoreSmallFile) &&
                  smallFileSizeValue.write(changed.smallFileSize);
    int index = 0;
    for (const SelectableCategory &category : changed.categories)
        stored = stored && settings::writeDword(key, QString::number(index++), category.selected ? 1 : 0);
    while (stored && settings::deleteValue(key, QString::number(index)))
        ++index;
    return stored;
}

} // namespace duplicates
