// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageGroupModel.h"

#include "FindDuplicateImage/ImageReport.h"
#include "FindDuplicateImage/ThumbnailCache.h"
#include "core/SizeText.h"

using lookalikes::ImageRecord;

ImageGroupModel::ImageGroupModel(ThumbnailCache &thumbnails, QObject *parent)
    : QAbstractListModel(parent),
      m_thumbnails(thumbnails)
{
}

void ImageGroupModel::setReport(const ImageReport *report)
{
    beginResetModel();
    m_report = report;
    endResetModel();
}

void ImageGroupModel::refresh(int group)
{
    emit dataChanged(index(group), index(group));
}

int ImageGroupModel::rowCount(const QModelIndex &parent) const
{
    return m_report && !parent.isValid() ? static_cast<int>(m_report->groups.size()) : 0;
}

QVariant ImageGroupModel::data(const QModelIndex &index, int role) const
{
    if (!m_report || !index.isValid())
        return {};
    const auto group = static_cast<std::size_t>(index.row());
    const ImageRecord &first = m_report->groups[group].members.front();
    const bool gone = first.checked || m_report->firstGone[group];
    switch (role) {
    case Qt::DisplayRole:
        return first.name;
    case Qt::DecorationRole:
        return m_thumbnails.pixmap(first.thumbnail);
    case Qt::ToolTipRole:
        return first.fullPath();
    case Qt::AccessibleTextRole:
        return tr("%1, %2").arg(first.fullPath(), detailText(group));
    case FolderRole:
        return gone ? tr("The file was moved to another location") : first.folder();
    case DetailRole:
        return detailText(group);
    case GoneRole:
        return gone;
    case SearchRole:
        return searchText(group);
    default:
        return {};
    }
}

QString ImageGroupModel::detailText(std::size_t group) const
{
    const auto &members = m_report->groups[group].members;
    quint64 bytes = 0;
    int left = 0;
    for (const ImageRecord &image : members) {
        bytes += image.checked ? 0U : image.size;
        left += image.checked ? 0 : 1;
    }
    const QString size = core::sizeText(bytes);
    if (left == static_cast<int>(members.size()))
        return tr("%1 pictures, %2").arg(QString::number(left), size);
    return tr("%1 of %2 pictures left, %3").arg(QString::number(left), QString::number(members.size()), size);
}

QString ImageGroupModel::searchText(std::size_t group) const
{
    QString text;
    for (const ImageRecord &image : m_report->groups[group].members)
        text += image.name + u'\n';
    return text;
}
