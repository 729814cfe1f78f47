// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/FileRecord.h"

namespace duplicates
{

QStringView suffixOf(QStringView fileName)
{
    const qsizetype dot = fileName.lastIndexOf(u'.');
    return dot < 0 ? QStringView() : fileName.sliced(dot + 1);
}

QString FileRecord::folder() const
{
    return walkedFolder.endsWith(u':') ? walkedFolder + u'\\' : walkedFolder;
}

QString FileRecord::fullPath() const
{
    return walkedFolder + u'\\' + name;
}

QString FileRecord::suffix() const
{
    return suffixOf(name).toString();
}

} // namespace duplicates
