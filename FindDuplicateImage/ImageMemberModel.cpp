// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageMemberModel.h"

#include "FindDuplicateImage/ImageReport.h"
#include "FindDuplicateImage/ThumbnailCache.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"

#include <utility>

using lookalikes::ImageRecord;

ImageMemberModel::ImageMemberModel(ThumbnailCache &thumbnails, QObject *parent)
    : QAbstractListModel(parent),
      m_thumbnails(thumbnails)
{
}

void ImageMemberModel::setGroup(const ImageReport *report, int group)
{
    beginResetModel();
    m_report = group < 0 ? nullptr : report;
    m_group = m_report ? group : -1;
    m_states.clear();
    m_marks.clear();
    findProposal();
    endResetModel();
}

void ImageMemberModel::setStates(std::vector<duplicates::MemberState> states)
{
    m_marks = duplicates::markMembers(states);
    m_states = std::move(states);
    refresh();
}

std::optional<duplicates::MemberState> ImageMemberModel::state(int row) const
{
    const auto at = static_cast<std::size_t>(row);
    return row >= 0 && at < m_states.size() ? std::optional(m_states[at]) : std::nullopt;
}

void ImageMemberModel::refresh()
{
    findProposal();
    if (rowCount() > 0)
        emit dataChanged(index(0), index(rowCount() - 1));
}

// Of the pictures that are still there.
void ImageMemberModel::findProposal()
{
    m_proposal = -1;
    if (!m_report)
        return;
    lookalikes::ImageGroup left = m_report->groups[static_cast<std::size_t>(m_group)];
    int count = 0;
    for (std::size_t i = 0; i < left.members.size(); ++i) {
        left.members[i].checked = isGone(static_cast<int>(i));
        count += left.members[i].checked ? 0 : 1;
    }
    if (count > 1)
        m_proposal = static_cast<int>(*lookalikes::proposedToKeep(left));
}

const ImageRecord *ImageMemberModel::record(int row) const
{
    if (row < 0 || row >= rowCount())
        return nullptr;
    return &m_report->groups[static_cast<std::size_t>(m_group)].members[static_cast<std::size_t>(row)];
}

bool ImageMemberModel::isGone(int row) const
{
    const ImageRecord *image = record(row);
    const auto found = state(row);
    return !image || image->checked || (found && !found->exists);
}

int ImageMemberModel::rowCount(const QModelIndex &parent) const
{
    if (!m_report || parent.isValid())
        return 0;
    return static_cast<int>(m_report->groups[static_cast<std::size_t>(m_group)].members.size());
}

QVariant ImageMemberModel::data(const QModelIndex &index, int role) const
{
    const ImageRecord *image = index.isValid() ? record(index.row()) : nullptr;
    if (!image)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return image->name;
    case Qt::DecorationRole:
        return m_thumbnails.pixmap(image->thumbnail);
    case Qt::ToolTipRole:
        return QString(image->fullPath() + u'\n' + dimensionsText(*image) + QStringLiteral(", ") +
                       core::sizeText(image->size) + QStringLiteral(", ") + formatText(*image) + u'\n' +
                       tr("Last written: %1").arg(platform::fileTimeText(image->lastWriteTime)));
    case Qt::AccessibleTextRole:
        return accessibleText(index.row());
    case FolderRole:
        return image->folder();
    case FactsRole:
        return tr("%1, %2, %3").arg(dimensionsText(*image), formatText(*image), core::sizeText(image->size));
    case DateRole:
        return platform::fileTimeText(image->lastWriteTime);
    case NoteRole:
        return note(index.row()).text;
    case NoteKindRole:
        return note(index.row()).kind;
    case FirstRole:
        return index.row() == 0;
    case GoneRole:
        return isGone(index.row());
    default:
        return {};
    }
}

ImageMemberModel::Note ImageMemberModel::note(int row) const
{
    const auto at = static_cast<std::size_t>(row);
    if (record(row)->checked)
        return {Gone, tr("Moved to the recycle bin")};
    if (isGone(row))
        return {Gone, tr("The file was moved to another location")};
    if (at < m_marks.size() && m_marks[at].sameFileAs >= 0)
        return {Warning, tr("Same file as %1").arg(record(m_marks[at].sameFileAs)->name)};
    if (at < m_marks.size() && m_marks[at].lastCopy)
        return {Warning, tr("Last copy")};
    if (row == m_proposal)
        return {Proposal, tr("Proposed to keep")};
    return {};
}

QString ImageMemberModel::accessibleText(int row) const
{
    const ImageRecord &image = *record(row);
    QString text =
        tr("%1, %2, %3, %4")
            .arg(image.fullPath(), dimensionsText(image), core::sizeText(image.size), formatText(image));
    const QString told = note(row).text;
    return told.isEmpty() ? text : text + QStringLiteral(", ") + told;
}
