// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/Settings.h"

#include <QDir>

namespace icons
{

namespace
{

constexpr settings::TextList recent{settings::keys::extractIcon, u"recentFile", {}, maxRecentFiles};
constexpr qsizetype maxPath = 32767; // limit of Windows

} // namespace

QStringList recentFiles()
{
    QStringList files;
    for (const QString &path : recent.read()) {
        if (path.size() <= maxPath && QDir::isAbsolutePath(path) &&
            !files.contains(path, Qt::CaseInsensitive))
            files.append(path);
    }
    return files;
}

void addRecentFile(const QString &path)
{
    QStringList files = recentFiles();
    files.removeIf([&](const QString &file) { return file.compare(path, Qt::CaseInsensitive) == 0; });
    files.prepend(path);
    recent.write(files);
}

} // namespace icons
