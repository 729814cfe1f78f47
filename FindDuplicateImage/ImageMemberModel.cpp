// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageMemberModel.h"

#include "FindDuplicateImage/ImageReport.h"
#include "core/SizeText.h"
#include "imaging/ThumbnailCache.h"
#include "platform/FileTime.h"

#include <algorithm>
#include <vector>

using lookalikes::ImageRecord;

ImageMemberModel::ImageMemberModel(imaging::ThumbnailCache &thumbnails, QObject *parent)
    : MemberListModel(parent),
      m_thumbnails(thumbnails)
{
}

void ImageMemberModel::setGroup(const ImageReport *report, int group)
{
    resetTo(report ? group : -1, [this, report] {
        m_report = report;
        updateProposal();
    });
}

void ImageMemberModel::updateProposal()
{
    m_proposal = -1;
    if (groupIndex() < 0)
        return;
    const lookalikes::ImageGroup left = imagesLeft();
    if (std::ranges::count(left.members, false, &ImageRecord::checked) > 1)
        m_proposal = static_cast<int>(*lookalikes::proposedToKeep(left));
}

lookalikes::ImageGroup ImageMemberModel::imagesLeft() const
{
    lookalikes::ImageGroup left = m_report->groups[static_cast<std::size_t>(groupIndex())];
    for (std::size_t i = 0; i < left.members.size(); ++i) {
        const auto known = facts(static_cast<int>(i));
        left.members[i].checked =
            isGone(static_cast<int>(i)) || (known && (known->changed || known->throughLink));
    }
    return left;
}

quint64 ImageMemberModel::spareBytes() const
{
    lookalikes::ImageGroup left = imagesLeft();
    std::vector<bool> counted(left.members.size(), false);
    for (std::size_t i = 0; i < left.members.size(); ++i) {
        if (left.members[i].checked)
            continue;
        // Of several names of a file one counts.
        const auto known = facts(static_cast<int>(i));
        const std::size_t first =
            known && known->mark.sameFileAs >= 0 ? static_cast<std::size_t>(known->mark.sameFileAs) : i;
        left.members[i].checked = counted[first];
        counted[first] = true;
    }
    return lookalikes::freeableBytes(left);
}

const ImageRecord *ImageMemberModel::record(int row) const
{
    if (row < 0 || row >= rowCount())
        return nullptr;
    return &m_report->groups[static_cast<std::size_t>(groupIndex())].members[static_cast<std::size_t>(row)];
}

bool ImageMemberModel::isGone(int row) const
{
    const ImageRecord *image = record(row);
    const auto known = facts(row);
    return !image || image->checked || (known && !known->mark.exists);
}

int ImageMemberModel::memberCount() const
{
    return static_cast<int>(m_report->groups[static_cast<std::size_t>(groupIndex())].members.size());
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
        return toolTip(index.row());
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

QString ImageMemberModel::toolTip(int row) const
{
    const ImageRecord &image = *record(row);
    QStringList lines{image.fullPath(),
                      dimensionsText(image) + QStringLiteral(", ") + core::sizeText(image.size) +
                          QStringLiteral(", ") + formatText(image),
                      tr("Last written: %1").arg(platform::fileTimeText(image.lastWriteTime))};
    lines += warnings(row);
    return lines.join(u'\n');
}

ImageMemberModel::Note ImageMemberModel::note(int row) const
{
    if (record(row)->checked)
        return {Gone, tr("Moved to the recycle bin")};
    if (isGone(row))
        return {Gone, tr("The file was moved to another location")};
    if (const QStringList told = warnings(row); !told.isEmpty())
        return {Warning, told.join(QStringLiteral("; "))};
    if (row == m_proposal)
        return {Proposal, tr("Proposed to keep")};
    return {};
}

// The most important one first, as there may not be room for all.
QStringList ImageMemberModel::warnings(int row) const
{
    QStringList told;
    const auto known = facts(row);
    if (!known)
        return told;
    if (known->mark.lastCopy)
        told.append(tr("Last copy"));
    if (known->changed)
        told.append(tr("Changed since the scan"));
    if (known->throughLink)
        told.append(tr("Reached through a link"));
    if (known->mark.sameFileAs >= 0) {
        const ImageRecord &same = *record(known->mark.sameFileAs);
        told.append(tr("Same file as %1 in %2").arg(same.name, same.folder()));
    }
    if (known->placeholder)
        told.append(tr("In the cloud"));
    return told;
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
