// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/ListedGroups.h"

#include "core/FolderWalk.h"

#include <QStringView>

namespace duplicates
{

FileSearch::FileSearch(const QString &root, const QString &text)
    : m_rootLength(core::walkRoot(root).size()),
      m_matcher(text, Qt::CaseInsensitive)
{
}

bool FileSearch::matches(const FileRecord &file) const
{
    return m_matcher.indexIn(file.name) >= 0 ||
           m_matcher.indexIn(QStringView(file.walkedFolder).mid(m_rootLength)) >= 0;
}

} // namespace duplicates
