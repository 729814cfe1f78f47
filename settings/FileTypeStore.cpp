// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/FileTypeStore.h"

#include "settings/Keys.h"
#include "settings/Settings.h"

#include <QDebug>

#include <algorithm>

namespace settings
{

namespace
{

constexpr QStringView key = keys::folderSizeAnalyzer;

} // namespace

bool loadFileTypes(core::FileTypeTable &table)
{
    qDebug() << "readFileTypeData";
    table.clear();
    quint32 count = 0;
    readDword(key, fileTypeDataCount, count);
    qDebug() << "fileTypeDataCount: " << count;
    const int last = static_cast<int>(std::min(count, mostFileTypes));
    for (int index = 0; index < last; ++index) {
        QString stored;
        if (!readString(key, numbered(fileTypeData, index), stored))
            continue;
        if (auto category = core::parseStoredFileType(stored))
            table.push_back(*std::move(category));
    }
    return !table.empty();
}

core::FileTypeTable loadFileTypesOrDefaults()
{
    core::FileTypeTable table;
    return loadFileTypes(table) ? table : core::defaultFileTypes();
}

bool saveFileTypes(const core::FileTypeTable &table)
{
    const int count = static_cast<int>(std::min<std::size_t>(table.size(), mostFileTypes));
    bool saved = writeDword(key, fileTypeDataCount, static_cast<quint32>(count));
    for (int index = 0; index < count; ++index)
        saved &= writeString(key, numbered(fileTypeData, index),
                             table[static_cast<std::size_t>(index)].storedText());
    // What an earlier, longer table left behind.
    int index = count;
    while (deleteValue(key, numbered(fileTypeData, index)))
        ++index;
    return saved;
}

} // namespace settings
