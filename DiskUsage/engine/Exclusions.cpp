// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Exclusions.h"

#include "core/FolderWalk.h"

#include <QDebug>

#include <algorithm>

namespace diskusage
{

namespace
{

bool beginsWith(const QString &path, const QString &prefix)
{
    return path.startsWith(prefix, Qt::CaseInsensitive);
}

} // namespace

Exclusions::Exclusions(const ScanOptions &options)
    : m_oneDrive(core::walkRoot(options.oneDriveFolder)),
      m_excludeOneDrive(options.excludeOneDrive && !m_oneDrive.isEmpty())
{
    for (const core::ExcludedFolder &folder : options.excludedFolders) {
        if (!folder.enabled || folder.path.isEmpty())
            continue;
        QString path = folder.path;
        m_paths.append(path.replace(QLatin1Char('/'), QLatin1Char('\\')));
    }
}

bool Exclusions::isInOneDrive(const QString &path) const
{
    return !m_oneDrive.isEmpty() && beginsWith(path, m_oneDrive);
}

bool Exclusions::isExcluded(const QString &path) const
{
    return (m_excludeOneDrive && isInOneDrive(path)) ||
           std::any_of(m_paths.begin(), m_paths.end(),
                       [&path](const QString &prefix) { return beginsWith(path, prefix); });
}

bool Exclusions::isExcludedLogged(const QString &path) const
{
    bool excluded = m_excludeOneDrive && isInOneDrive(path);
    for (const QString &prefix : m_paths) {
        if (beginsWith(path, prefix)) {
            qDebug() << "exclude path 1: " << path;
            excluded = true;
        }
    }
    return excluded;
}

} // namespace diskusage
