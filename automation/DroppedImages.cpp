// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/DroppedImages.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace automation
{

namespace
{

void addFolder(DroppedImages &found, const QString &folder, const QSet<QString> &suffixes,
               const core::CancelFlag &cancel, int maxEntries)
{
    QStringList files;
    QDirIterator entries(folder, QDir::Files);
    for (int met = 0; entries.hasNext() && !cancel.isSet(); ++met) {
        if (met == maxEntries) {
            found.isWhole = false;
            break;
        }
        const QString file = entries.next();
        if (suffixes.contains(entries.fileInfo().suffix().toLower()))
            files.append(QDir::toNativeSeparators(file));
    }
    QCollator names;
    names.setNumericMode(true);
    names.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(files.begin(), files.end(), names);
    if (files.isEmpty())
        found.emptyFolders.append(folder);
    found.files.append(files);
}

} // namespace

DroppedImages droppedImages(const QStringList &paths, const QSet<QString> &suffixes,
                            const core::CancelFlag &cancel, int maxEntries)
{
    DroppedImages found;
    for (const QString &path : paths) {
        if (cancel.isSet())
            break;
        if (QFileInfo(path).isDir())
            addFolder(found, path, suffixes, cancel, maxEntries);
        else
            found.files.append(path);
    }
    return found;
}

} // namespace automation
