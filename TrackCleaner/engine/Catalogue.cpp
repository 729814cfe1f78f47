// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/Catalogue.h"

#include <QList>
#include <QStringBuilder>
#include <QtGlobal>

#include <algorithm>

namespace tracks
{

namespace
{

constexpr QStringView explorerKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";
constexpr QStringView recentFolder = u"\\AppData\\Roaming\\Microsoft\\Windows\\recent";

std::vector<FileSource> recentSources(const QString &profile)
{
    const QString recent = profile % recentFolder;
    std::vector<FileSource> sources;
    for (const QString &folder :
         {QString(recent % u"\\AutomaticDestinations"), QString(recent % u"\\CustomDestinations"), recent})
        sources.push_back({.folder = folder, .trustedRoot = profile, .recursive = false});
    return sources;
}

std::vector<FileSource> logSources(const Locations &locations)
{
    std::vector<FileSource> sources;
    if (!locations.windows.isEmpty())
        sources.push_back({.folder = locations.windows,
                           .trustedRoot = locations.windows,
                           .pattern = Pattern::Logs,
                           .privileged = true});
    if (!locations.profile.isEmpty())
        sources.push_back({.folder = locations.profile % u"\\AppData\\Local\\Microsoft",
                           .trustedRoot = locations.profile,
                           .pattern = Pattern::Logs});
    return sources;
}

std::vector<FileSource> privilegedSource(const QString &root, QStringView below)
{
    if (root.isEmpty())
        return {};
    return {{.folder = root % below, .trustedRoot = root, .privileged = true}};
}

// True if `folder` is `other` or an ancestor of it: "C:\Users\a" for "C:\Users\a\AppData".
bool isOrHolds(const QString &folder, const QString &other)
{
    return !other.isEmpty() && QString(other % u'\\').startsWith(folder % u'\\', Qt::CaseInsensitive);
}

TempObstacle obstacleOf(const QString &folder, const Locations &locations)
{
    if (folder.isEmpty())
        return TempObstacle::Unknown;
    const QStringList names = folder.split(u'\\', Qt::SkipEmptyParts);
    const bool onShare = folder.startsWith(u"\\\\");
    if (names.size() <= (onShare ? 2 : 1))
        return TempObstacle::DriveRoot;
    if (isOrHolds(folder, locations.profile) || isOrHolds(folder, locations.windows))
        return TempObstacle::HoldsSystem;
    const bool temporary = std::any_of(names.begin(), names.end(), [](const QString &name) {
        return name.compare(u"temp", Qt::CaseInsensitive) == 0 ||
               name.compare(u"tmp", Qt::CaseInsensitive) == 0;
    });
    return temporary ? TempObstacle::None : TempObstacle::NotTemporary;
}

} // namespace

const std::array<CatalogueRow, itemCount> &catalogue()
{
    static constexpr std::array<CatalogueRow, itemCount> rows{{
        {Item::RecentFiles, Group::FileExplorer, QT_TRANSLATE_NOOP("tracks", "Quick access (recent files)"),
         "TrackCleanerFileExplorerRecentFiles", false},
        {Item::TypedPaths, Group::FileExplorer, QT_TRANSLATE_NOOP("tracks", "Typed Paths"),
         "TrackCleanerFileExplorerTypedPaths", false},
        {Item::SearchHistory, Group::FileExplorer, QT_TRANSLATE_NOOP("tracks", "Search History"),
         "TrackCleanerFileExplorerSearchHistory", false},
        {Item::RunDialog, Group::Windows, QT_TRANSLATE_NOOP("tracks", "Run dialog box (history)"),
         "TrackCleanerWindowsRunDialog", false},
        {Item::LogFiles, Group::Windows, QT_TRANSLATE_NOOP("tracks", "Windows Log Files"),
         "TrackCleanerWindowsLogFiles", true},
        {Item::ErrorReporting, Group::Windows, QT_TRANSLATE_NOOP("tracks", "Windows Error Reporting"),
         "TrackCleanerWindowsErrorReporting", true},
        {Item::NetworkData, Group::Windows, QT_TRANSLATE_NOOP("tracks", "Network Data Usage"),
         "TrackCleanerWindowsNetworkData", true},
        {Item::TempFiles, Group::Windows, QT_TRANSLATE_NOOP("tracks", "Temporary Files"),
         "TrackCleanerWindowsTempFiles", true},
    }};
    return rows;
}

std::vector<FileSource> fileSources(Item item, const Locations &locations)
{
    switch (item) {
    case Item::RecentFiles:
        return locations.profile.isEmpty() ? std::vector<FileSource>() : recentSources(locations.profile);
    case Item::LogFiles:
        return logSources(locations);
    case Item::ErrorReporting:
        return privilegedSource(locations.programData, u"\\Microsoft\\Windows\\WER\\ReportArchive");
    case Item::NetworkData:
        return privilegedSource(locations.windows, u"\\System32\\sru");
    case Item::TempFiles:
        if (tempObstacle(locations) != TempObstacle::None)
            return {};
        return {{.folder = locations.temporary, .trustedRoot = locations.temporary}};
    case Item::TypedPaths:
    case Item::SearchHistory:
    case Item::RunDialog:
        break;
    }
    return {};
}

std::optional<KeySource> keySource(Item item)
{
    const QString parent = explorerKey.toString();
    switch (item) {
    case Item::RecentFiles:
        return KeySource{parent, QStringLiteral("RecentDocs"), true};
    case Item::TypedPaths:
        return KeySource{parent, QStringLiteral("TypedPaths")};
    case Item::SearchHistory:
        return KeySource{parent, QStringLiteral("WordWheelQuery")};
    case Item::RunDialog:
        return KeySource{parent, QStringLiteral("RunMRU")};
    default:
        return std::nullopt;
    }
}

TempObstacle tempObstacle(const Locations &locations)
{
    for (const QString &folder : {locations.temporary, locations.temporaryTarget}) {
        const TempObstacle obstacle = obstacleOf(folder, locations);
        if (obstacle != TempObstacle::None)
            return obstacle;
    }
    return TempObstacle::None;
}

bool isLogName(QStringView name)
{
    return name.endsWith(u".log", Qt::CaseInsensitive);
}

} // namespace tracks
