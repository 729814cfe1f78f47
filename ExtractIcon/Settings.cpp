// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/Settings.h"

#include <QDir>

namespace icons
{

namespace
{

constexpr QStringView key = settings::keys::extractIcon;
constexpr QStringView recentFile = u"recentFile";
constexpr qsizetype maxPath = 32767; // limit of Windows

} // namespace

QStringList recentFiles()
{
    QStringList files;
    for (int i = 0; i < maxRecentFiles; ++i) {
        QString path;
        if (settings::readString(key, settings::numbered(recentFile, i), path) && path.size() <= maxPath &&
            QDir::isAbsolutePath(path) && !files.contains(path, Qt::CaseInsensitive))
            files.append(path);
    }
    return files;
}

void addRecentFile(const QString &path)
{
    QStringList files = recentFiles();
    files.removeIf([&](const QString &file) { return file.compare(path, Qt::CaseInsensitive) == 0; });
    files.prepend(path);
    for (int i = 0; i < maxRecentFiles && i < files.size(); ++i)
        settings::writeString(key, settings::numbered(recentFile, i), files[i]);
}

} // namespace icons
