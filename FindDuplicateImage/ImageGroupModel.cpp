// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageGroupModel.h"

#include "FindDuplicateImage/ImageReport.h"
#include "core/SizeText.h"
#include "imaging/ThumbnailCache.h"

#include <numeric>

using lookalikes::ImageRecord;

ImageGroupModel::ImageGroupModel(imaging::ThumbnailCache &thumbnails, QObject *parent)
    : QAbstractListModel(parent),
      m_thumbnails(thumbnails)
{
}

void ImageGroupModel::setReport(const ImageReport *report)
{
    m_report = report;
    std::vector<int> all(report ? report->groups.size() : 0);
    std::iota(all.begin(), all.end(), 0);
    setListed(std::move(all));
}

void ImageGroupModel::setListed(std::vector<int> groups)
{
    beginResetModel();
    m_listed = std::move(groups);
    m_rowOf.assign(m_report ? m_report->groups.size() : 0, -1);
    for (std::size_t row = 0; row < m_listed.size(); ++row)
        m_rowOf[static_cast<std::size_t>(m_listed[row])] = static_cast<int>(row);
    endResetModel();
}

void ImageGroupModel::refresh(int group)
{
    const int row = rowOf(group);
    if (row >= 0)
        emit dataChanged(index(row), index(row));
}

void ImageGroupModel::refreshAll()
{
    if (rowCount() > 0)
        emit dataChanged(index(0), index(rowCount() - 1));
}

int ImageGroupModel::groupAt(int row) const
{
    return row >= 0 && row < rowCount() ? m_listed[static_cast<std::size_t>(row)] : -1;
}

int ImageGroupModel::rowOf(int group) const
{
    const auto at = static_cast<std::size_t>(group);
    return group >= 0 && at < m_rowOf.size() ? m_rowOf[at] : -1;
}

int ImageGroupModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_listed.size());
}

QVariant ImageGroupModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto group = static_cast<std::size_t>(groupAt(index.row()));
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
