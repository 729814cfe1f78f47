// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/IconListModel.h"

#include <QFileInfo>
#include <QIcon>

#include <algorithm>

namespace icons
{

RecordList &recordList()
{
    static RecordList list;
    return list;
}

void IconListModel::clear()
{
    beginResetModel();
    m_shown = 0;
    endResetModel();
}

void IconListModel::showNew()
{
    const int count = static_cast<int>(recordList().records.size());
    if (count <= m_shown)
        return;
    beginInsertRows({}, m_shown, count - 1);
    m_shown = count;
    endInsertRows();
}

void IconListModel::thumbnailsChanged(int first, int last)
{
    last = std::min(last, m_shown - 1);
    if (first <= last)
        emit dataChanged(index(first), index(last), {Qt::DecorationRole});
}

int IconListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

QVariant IconListModel::data(const QModelIndex &index, int role) const
{
    const RecordList &list = recordList();
    if (!index.isValid() || index.row() >= list.records.size())
        return {};
    const IconRecord &record = list.records[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return record.id == IconFileSource::onlyId ? QFileInfo(list.path).fileName()
                                                   : QString::number(record.id);
    case Qt::DecorationRole: {
        const QImage &image = list.thumbnails[index.row()];
        return image.isNull() ? QVariant() : QVariant(QIcon(QPixmap::fromImage(image)));
    }
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole: {
        QStringList sizes;
        for (const ImageFacts &facts : record.images)
            sizes.append(sizeAndDepth(facts));
        return sizes.join(QLatin1Char('\n'));
    }
    case Qt::SizeHintRole: // constant, also before the image is decoded: the view measures once
        return cellSize;
    default:
        return {};
    }
}

} // namespace icons
