// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/BiggestFilesModel.h"

#include "DiskUsage/DataFilesModel.h"
#include "core/FileTypes.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"

using namespace diskusage;

namespace
{

constexpr int sortKeyRole = Qt::UserRole;

QStandardItem *makeItem(const QString &text, const QVariant &sortKey, bool number = false)
{
    auto *item = new QStandardItem(text);
    item->setData(sortKey, sortKeyRole);
    item->setEditable(false);
    item->setTextAlignment((number ? Qt::AlignTrailing : Qt::AlignLeading) | Qt::AlignVCenter);
    return item;
}

} // namespace

BiggestFilesModel::BiggestFilesModel(QObject *parent) : QStandardItemModel(parent)
{
    setSortRole(sortKeyRole);
}

void BiggestFilesModel::setFiles(const std::vector<BiggestFile> &files)
{
    clear();
    QStringList titles;
    for (int column = 0; column < FileColumnTotal; ++column)
        titles.append(fileColumnTitle(column));
    setHorizontalHeaderLabels(titles);
    for (const int column : {FileSizeText, FileRawSize})
        horizontalHeaderItem(column)->setTextAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    for (const BiggestFile &file : files) {
        const QString path = file.folder.endsWith(QLatin1Char('\\'))
                                 ? file.folder + file.name
                                 : file.folder + QLatin1Char('\\') + file.name;
        const QVariant size = file.size;
        auto *rawSize = makeItem({}, size, true);
        rawSize->setData(size, Qt::EditRole);
        appendRow(
            {makeItem(file.name, file.name.toCaseFolded()), makeItem(core::sizeText(file.size), size, true),
             makeItem(platform::fileTimeText(file.lastAccessTime), QVariant::fromValue(file.lastAccessTime)),
             makeItem(path, path.toCaseFolded()), rawSize});
    }
}

QString BiggestFilesModel::filePath(int row) const
{
    const QStandardItem *path = item(row, FilePath);
    return path ? path->text() : QString();
}
