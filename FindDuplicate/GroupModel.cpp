// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/GroupModel.h"

#include "FindDuplicate/FileIcons.h"
#include "FindDuplicate/engine/Grouping.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"
#include "widgets/FileRowDelegate.h"

namespace duplicates
{

namespace
{

QString lastAccessText(const FileRecord &file)
{
    return GroupModel::tr("Last Access Time: ") + platform::fileTimeText(file.lastAccessTime);
}

QString movedText()
{
    return GroupModel::tr("The file was moved to another location");
}

// The complete text of the row. A blank line separates the name from the rest.
QString wholeText(const FileRecord &file)
{
    return file.name + QStringLiteral("\n\n") + file.folder() + QLatin1Char('\n') + lastAccessText(file);
}

QList<RowBadge> badges(const DuplicateGroup &group)
{
    const std::size_t left = filesLeft(group);
    const std::size_t removed = group.members.size() - left;
    QList<RowBadge> result{{core::countText(left, GroupModel::tr("1 file"), GroupModel::tr("%1 files")),
                            RowBadge::Tone::Neutral},
                           {core::sizeText(group.size), RowBadge::Tone::Neutral}};
    if (removed > 0)
        result.append({GroupModel::tr("%1 removed").arg(QString::number(removed)), RowBadge::Tone::Good});
    return result;
}

} // namespace

void GroupModel::setGroups(const std::vector<DuplicateGroup> *groups)
{
    m_groups = groups;
    reset(static_cast<int>(groups->size()));
}

int GroupModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnTotal;
}

QVariant GroupModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const int group = groupAt(index.row());
    switch (index.column()) {
    case Text:
        return textData((*m_groups)[static_cast<std::size_t>(group)], firstFileExists(group), role);
    case GroupIndex:
        return role == Qt::DisplayRole ? QVariant(group) : QVariant();
    case MemberIndex:
        return role == Qt::DisplayRole ? QVariant(0) : QVariant(); // the row shows the first member
    default:
        return {};
    }
}

QVariant GroupModel::textData(const DuplicateGroup &group, bool exists, int role) const
{
    const FileRecord &file = group.members.front();
    switch (role) {
    case Qt::DisplayRole:
        return exists ? wholeText(file) : movedText();
    case Qt::AccessibleTextRole:
        return accessibleRowText(exists ? wholeText(file) : movedText(), badges(group));
    case Qt::DecorationRole:
        return exists ? FileIcons::instance().icon(file.name) : FileIcons::missing();
    case Qt::ToolTipRole:
        return file.fullPath();
    case FileRowDelegate::TitleRole:
        return exists ? file.name : movedText();
    case FileRowDelegate::LinesRole:
        return exists ? QStringList{file.folder(), lastAccessText(file), QString()}
                      : QStringList{file.fullPath(), QString(), QString()};
    case FileRowDelegate::BadgesRole:
        return QVariant::fromValue(badges(group));
    default:
        return {};
    }
}

} // namespace duplicates
