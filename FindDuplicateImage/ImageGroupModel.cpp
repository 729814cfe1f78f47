// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageGroupModel.h"

#include "FindDuplicateImage/ImageReport.h"
#include "core/SizeText.h"
#include "imaging/ThumbnailCache.h"

using lookalikes::ImageRecord;

ImageGroupModel::ImageGroupModel(imaging::ThumbnailCache &thumbnails, QObject *parent)
    : GroupListModel(parent),
      m_thumbnails(thumbnails)
{
}

void ImageGroupModel::setReport(const ImageReport *report)
{
    m_report = report;
    reset(report ? static_cast<int>(report->groups.size()) : 0);
}

QVariant ImageGroupModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto group = static_cast<std::size_t>(groupAt(index.row()));
    const ImageRecord &first = m_report->groups[group].members.front();
    const bool gone = first.checked || !firstFileExists(groupAt(index.row()));
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
