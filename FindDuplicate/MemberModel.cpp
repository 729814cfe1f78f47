// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/MemberModel.h"

#include "FindDuplicate/FileIcons.h"
#include "core/SizeText.h"
#include "platform/KnownFolders.h"
#include "widgets/FileRowDelegate.h"

#include <algorithm>
#include <iterator>

namespace duplicates
{

namespace
{

using Tone = RowBadge::Tone;

// The outcome of a removal: whether the file was moved is known from the move, whether its path exists now
// from the disk.
RowBadge removalBadge(const FileRecord &file, bool exists)
{
    if (file.moved)
        return exists ? RowBadge{MemberModel::tr("moved to the recycle bin, and there again"), Tone::Warning}
                      : RowBadge{MemberModel::tr("moved to the recycle bin"), Tone::Neutral};
    if (file.untraced && !exists)
        return {MemberModel::tr("gone, Windows did not tell where to"), Tone::Warning};
    return exists ? RowBadge{MemberModel::tr("still here: it could not be moved"), Tone::Danger}
                  : RowBadge{MemberModel::tr("could not be moved, and has gone since"), Tone::Warning};
}

// A file in this folder belongs to Windows or an installed program, whatever it is a copy of.
RowBadge installedBadge(const QString &folder)
{
    using platform::KnownFolder;
    static const QString windows = platform::knownFolder(KnownFolder::Windows);
    static const QStringList programs{platform::knownFolder(KnownFolder::ProgramFiles),
                                      platform::knownFolder(KnownFolder::ProgramFilesX86)};
    const auto isBelow = [&folder](const QString &root) {
        return !root.isEmpty() && (folder + u'\\').startsWith(root + u'\\', Qt::CaseInsensitive);
    };
    if (isBelow(windows))
        return {MemberModel::tr("belongs to Windows"), Tone::Warning};
    if (std::any_of(programs.cbegin(), programs.cend(), isBelow))
        return {MemberModel::tr("belongs to a program"), Tone::Warning};
    return {};
}

} // namespace

void MemberModel::setGroup(const DuplicateGroup *group, int groupIndex)
{
    resetTo(group ? groupIndex : -1, [this, group] {
        m_group = group;
        m_contents.clear();
        m_proposed.reset();
    });
}

void MemberModel::setContents(std::vector<ContentState> contents)
{
    m_contents = std::move(contents);
    membersChanged();
}

void MemberModel::updateProposal()
{
    if (!m_contents.empty())
        markAgain(knownFacts(), m_contents);
    if (!allFacts().empty())
        m_proposed = proposedToKeep(m_group->members, allFacts(), m_contents);
}

int MemberModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnTotal;
}

QVariant MemberModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (index.column() == Text)
        return textData(index.row(), role);
    if (role != Qt::DisplayRole)
        return {};
    const FileRecord &file = m_group->members[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case State:
        return file.checked ? QStringLiteral("1") : QString();
    case GroupIndex:
        return groupIndex();
    case MemberIndex:
        return index.row();
    case Path:
        return file.fullPath();
    default:
        return {};
    }
}

// It disappeared, but not through a removal on this page.
bool MemberModel::isMissing(int member) const
{
    const std::optional<MemberFacts> known = facts(member);
    return known && !known->mark.exists && !m_group->members[static_cast<std::size_t>(member)].moved;
}

QString MemberModel::wholeText(const FileRecord &file) const
{
    return file.name + QLatin1Char('\n') + file.folder() + QLatin1Char('\n') + tr("File Size: ") +
           core::sizeText(file.size);
}

QVariant MemberModel::textData(int member, int role) const
{
    const FileRecord &file = m_group->members[static_cast<std::size_t>(member)];
    const QString moved = tr("The file was moved to another location");
    switch (role) {
    case Qt::DisplayRole:
        return isMissing(member) ? moved : wholeText(file);
    case Qt::AccessibleTextRole:
        return accessibleRowText(isMissing(member) ? moved : wholeText(file), badges(member));
    case Qt::DecorationRole:
        return isMissing(member) ? FileIcons::missing()
               : file.checked    ? FileIcons::removed()
                                 : FileIcons::instance().icon(file.name);
    case Qt::ToolTipRole:
        return toolTip(member);
    case FileRowDelegate::TitleRole:
        return isMissing(member) ? moved : file.name;
    case FileRowDelegate::LinesRole:
        // The badges use the last line alone.
        return QStringList{isMissing(member) ? file.fullPath() : file.folder(),
                           tr("File Size: ") + core::sizeText(file.size), QString()};
    case FileRowDelegate::StruckRole:
        return file.moved;
    case FileRowDelegate::BadgesRole:
        return QVariant::fromValue(badges(member));
    default:
        return {};
    }
}

// Lists the badges one per line, since a narrow row has no room for all.
QString MemberModel::toolTip(int member) const
{
    QString text = m_group->members[static_cast<std::size_t>(member)].fullPath();
    for (const RowBadge &badge : badges(member))
        text += u'\n' + badge.text;
    return text;
}

QList<RowBadge> MemberModel::badges(int member) const
{
    const std::optional<MemberFacts> known = facts(member);
    const FileRecord &file = m_group->members[static_cast<std::size_t>(member)];
    QList<RowBadge> result;
    if (file.checked) // until the disk has been checked, the outcome of the move counts
        result.append(removalBadge(file, known ? known->mark.exists : !file.moved && !file.untraced));
    appendDiskBadges(result, member);
    const auto index = static_cast<std::size_t>(member);
    const ContentState content = index < m_contents.size() ? m_contents[index] : ContentState::NotCompared;
    if (content != ContentState::NotCompared)
        result.append(contentBadge(content));
    else if (known && known->placeholder)
        result.append({tr("in the cloud"), Tone::Neutral});
    if (!isMissing(member) && !file.moved)
        if (const RowBadge installed = installedBadge(file.walkedFolder); !installed.text.isEmpty())
            result.append(installed);
    if (m_proposed == index)
        result.append({tr("proposed to keep"), Tone::Good});
    return result;
}

void MemberModel::appendDiskBadges(QList<RowBadge> &badges, int member) const
{
    const std::optional<MemberFacts> known = facts(member);
    if (!known)
        return;
    if (known->mark.exists && known->mark.lastCopy)
        badges.append({tr("last copy"), Tone::Warning});
    if (known->mark.sameFileAs >= 0)
        badges.append(sameFileBadge(*known));
    if (known->throughLink)
        badges.append({tr("reached through a link"), Tone::Neutral});
    if (known->changed)
        badges.append({tr("changed since the scan"), Tone::Warning});
}

// Reached by another name (hard link), or the same name by another path.
RowBadge MemberModel::sameFileBadge(const MemberFacts &known) const
{
    const QString row = QString::number(known.mark.sameFileAs + 1);
    const MemberFacts &other = allFacts()[static_cast<std::size_t>(known.mark.sameFileAs)];
    const bool hardLink = known.hardLinked && !known.throughLink && !other.throughLink;
    return {hardLink ? tr("hard link to the file of row %1").arg(row) : tr("same file as row %1").arg(row),
            Tone::Warning};
}

RowBadge MemberModel::contentBadge(ContentState state) const
{
    switch (state) {
    case ContentState::Reference:
        return {tr("compared with this one"), Tone::Neutral};
    case ContentState::Identical: {
        const auto reference = std::find(m_contents.cbegin(), m_contents.cend(), ContentState::Reference);
        const auto row = std::distance(m_contents.cbegin(), reference);
        return {row == 0 ? tr("identical to the first")
                         : tr("identical to row %1").arg(QString::number(row + 1)),
                Tone::Good};
    }
    case ContentState::Different:
        return {tr("different content"), Tone::Danger};
    case ContentState::Unreadable:
        return {tr("could not be read"), Tone::Warning};
    case ContentState::Placeholder:
        return {tr("in the cloud, not opened"), Tone::Neutral};
    case ContentState::NotCompared:
        break;
    }
    return {};
}

} // namespace duplicates
