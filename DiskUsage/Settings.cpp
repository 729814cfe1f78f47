// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/Settings.h"

#include "settings/FileTypeStore.h"
#include "settings/Settings.h"

#include <QDebug>
#include <QDir>

namespace diskusage
{

namespace
{

// A path longer than any that Windows can have is not a path.
constexpr qsizetype maxPathLength = 32767;

} // namespace

std::vector<core::ExcludedFolder> loadExcludedFolders()
{
    qDebug() << "readExcludeFolderData";
    std::vector<core::ExcludedFolder> folders;
    for (const QString &stored : excludedFolderTexts.read()) {
        qDebug() << "dataStr: " << stored;
        if (auto folder = core::parseStoredExcludedFolder(stored))
            folders.push_back(*std::move(folder));
    }
    return folders;
}

bool saveExcludedFolders(const std::vector<core::ExcludedFolder> &folders)
{
    QStringList texts;
    for (const core::ExcludedFolder &folder : folders)
        texts.append(folder.storedText());
    return excludedFolderTexts.write(texts);
}

ScanSettings loadScanSettings()
{
    return {settings::loadFileTypesOrDefaults(), loadExcludedFolders(), excludeOneDriveFolder.read()};
}

bool saveScanSettings(const ScanSettings &changed)
{
    const bool fileTypes = settings::saveFileTypes(changed.fileTypes);
    const bool folders = saveExcludedFolders(changed.excludedFolders);
    return excludeOneDriveFolder.write(changed.excludeOneDrive) && fileTypes && folders;
}

QStringList loadRecentFolders()
{
    QStringList folders;
    for (const QString &folder : recentFolders.read()) {
        if (!folder.isEmpty() && folder.size() <= maxPathLength)
            folders.append(QDir::toNativeSeparators(folder));
    }
    return folders;
}

QStringList withRecentFolder(const QStringList &folders, const QString &folder)
{
    QStringList result{folder};
    for (const QString &known : folders)
        if (known.compare(folder, Qt::CaseInsensitive) != 0 && result.size() < maxRecentFolders)
            result.append(known);
    return result;
}

void saveRecentFolders(const QStringList &folders)
{
    recentFolders.write(folders);
}

QString oneDriveFolder()
{
    QString folder;
    settings::readString(settings::keys::environment, u"OneDrive", folder);
    folder = QDir::toNativeSeparators(folder);
    while (folder.endsWith(QLatin1Char('\\')))
        folder.chop(1);
    return folder;
}

} // namespace diskusage
