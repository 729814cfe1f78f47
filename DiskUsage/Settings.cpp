// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/Settings.h"

#include "settings/FileTypeStore.h"
#include "settings/Settings.h"

#include <QDebug>
#include <QDir>

#include <algorithm>

namespace diskusage
{

namespace
{

constexpr QStringView key = settings::keys::folderSizeAnalyzer;
// A path longer than any that Windows can have is not a path.
constexpr qsizetype maxPathLength = 32767;

bool readNumbered(QStringView name, int index, QString &text)
{
    return settings::readString(key, settings::numbered(name, index), text);
}

// Absent values are no failure.
bool removeValue(const QString &name)
{
    return settings::deleteValue(key, name) || !settings::valueExists(key, name);
}

} // namespace

std::vector<core::ExcludedFolder> loadExcludedFolders()
{
    qDebug() << "readExcludeFolderData";
    std::vector<core::ExcludedFolder> folders;
    for (int index = 0; index < maxExcludedFolders; ++index) {
        QString stored;
        if (!readNumbered(excludedFolderData, index, stored))
            continue;
        qDebug() << "dataStr: " << stored;
        if (auto folder = core::parseStoredExcludedFolder(stored))
            folders.push_back(*std::move(folder));
    }
    return folders;
}

bool saveExcludedFolders(const std::vector<core::ExcludedFolder> &folders)
{
    bool saved = true;
    for (int index = 0; index < maxExcludedFolders; ++index) {
        const QString name = settings::numbered(excludedFolderData, index);
        if (static_cast<std::size_t>(index) < folders.size())
            saved &= settings::writeString(key, name, folders[static_cast<std::size_t>(index)].storedText());
        else
            saved &= removeValue(name);
    }
    return saved;
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
    for (int index = 0; index < maxRecentFolders; ++index) {
        QString folder;
        if (readNumbered(recentFile, index, folder) && !folder.isEmpty() && folder.size() <= maxPathLength)
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
    for (int index = 0; index < maxRecentFolders; ++index) {
        const QString name = settings::numbered(recentFile, index);
        if (index < folders.size())
            settings::writeString(key, name, folders.at(index));
        else
            settings::deleteValue(key, name);
    }
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
