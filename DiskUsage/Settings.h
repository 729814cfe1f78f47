// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"
#include "settings/Keys.h"
#include "settings/Values.h"

#include <QStringList>

#include <vector>

// What the analyzer keeps in the registry. Read on the interface thread when the page is built, and by value
// into the options of a scan; written when the options page is saved and when a folder is chosen. Stored
// values are input from outside: what cannot be used counts as absent.
namespace diskusage
{

// Below HKEY_CURRENT_USER\settings::keys::folderSizeAnalyzer. "Exlude" is how the stored format spells it.
inline constexpr settings::Flag excludeOneDriveFolder{settings::keys::folderSizeAnalyzer,
                                                      u"ExcludeOneDriveFolder", false};

// Columns of the result tables, see widgets/ColumnState.h.
inline constexpr settings::Text biggestFilesColumns{settings::keys::folderSizeAnalyzer,
                                                    u"BiggestFilesColumns"};
inline constexpr settings::Text notCountedColumns{settings::keys::folderSizeAnalyzer, u"NotCountedColumns"};

inline constexpr int maxExcludedFolders = 10; // indexes 0 to 9
inline constexpr int maxRecentFolders = 6;    // indexes 0 to 5
inline constexpr settings::TextList excludedFolderTexts{
    settings::keys::folderSizeAnalyzer, u"ExludeFolder", {}, maxExcludedFolders};
inline constexpr settings::TextList recentFolders{
    settings::keys::folderSizeAnalyzer, u"RecentFile", {}, maxRecentFolders};

std::vector<core::ExcludedFolder> loadExcludedFolders();
// Saving answers false when Windows refused any of it.
// Writes at most ten and deletes the stored ones beyond, which would come back at the next load.
bool saveExcludedFolders(const std::vector<core::ExcludedFolder> &folders);

// What the options page edits and every scan reads.
struct ScanSettings {
    core::FileTypeTable fileTypes;
    std::vector<core::ExcludedFolder> excludedFolders;
    bool excludeOneDrive = false;

    bool operator==(const ScanSettings &) const = default;
};

ScanSettings loadScanSettings();
bool saveScanSettings(const ScanSettings &changed);

// Newest first. A hole in the numbers ends nothing: later ones are still read.
QStringList loadRecentFolders();
// Puts `folder` in front; the same folder in another case is one and the same.
QStringList withRecentFolder(const QStringList &folders, const QString &folder);
void saveRecentFolders(const QStringList &folders);

// Where OneDrive keeps its files, from the user's environment; empty without OneDrive. No separator at the
// end.
QString oneDriveFolder();

} // namespace diskusage
