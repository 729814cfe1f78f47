// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/FileTypeStore.h"

#include "settings/Keys.h"
#include "settings/Values.h"

#include <QDebug>

namespace settings
{

namespace
{

constexpr TextList stored{keys::folderSizeAnalyzer, fileTypeData, fileTypeDataCount, maxFileTypes};

} // namespace

bool loadFileTypes(core::FileTypeTable &table)
{
    qDebug() << "readFileTypeData";
    table.clear();
    const QStringList texts = stored.read();
    qDebug() << "fileTypeDataCount: " << texts.size();
    for (const QString &text : texts) {
        if (auto category = core::parseStoredFileType(text))
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
    QStringList texts;
    for (const core::FileTypeCategory &category : table)
        texts.append(category.storedText());
    return stored.write(texts);
}

} // namespace settings
