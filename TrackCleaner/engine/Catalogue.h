// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

// What the track cleaner looks for, and where Windows keeps it.
namespace tracks
{

// In the order in which items are scanned and cleared.
enum class Item {
    RecentFiles,
    TypedPaths,
    SearchHistory,
    RunDialog,
    LogFiles,
    ErrorReporting,
    NetworkData,
    TempFiles,
};
inline constexpr std::size_t itemCount = 8;

constexpr std::size_t indexOf(Item item)
{
    return static_cast<std::size_t>(item);
}

enum class Group { FileExplorer, Windows };

// One flag per item, in the catalogue's order.
using ItemFlags = std::array<bool, itemCount>;

struct CatalogueRow {
    Item item;
    Group group;
    const char *label; // to be translated in the context "tracks"
    const char *stem;  // of the object names: stem + "CheckBox", "Label", "Button"
    bool sized;        // the item's label shows a size after the count
};

const std::array<CatalogueRow, itemCount> &catalogue();

// The folders that everything is derived from, without a separator at the end. An empty one: Windows did not
// tell it, and nothing is looked for there.
struct Locations {
    QString profile;
    QString windows;
    QString programData;     // common application data
    QString temporary;       // GetTempPathW, long names
    QString temporaryTarget; // where that leads to when links on the way are followed
};

enum class Pattern { Everything, Logs };

// A folder whose files are traces.
struct FileSource {
    QString folder;
    // The folder that is trusted to be what it seems. No link may stand between it and a file.
    QString trustedRoot;
    Pattern pattern = Pattern::Everything;
    bool recursive = true;
    bool privileged = false; // users may lack the right to remove what is there
};

// In the order in which they are cleared. Empty when the location is unknown, or for an item of the registry.
std::vector<FileSource> fileSources(Item item, const Locations &locations);

// A key below HKEY_CURRENT_USER whose values are traces.
struct KeySource {
    QString parent;
    QString name;
    bool withSubkeys = false; // those of its subkeys too

    QString path() const { return parent + QLatin1Char('\\') + name; }
};

std::optional<KeySource> keySource(Item item);

// Why the temporary folder that Windows names must not be emptied.
enum class TempObstacle {
    None,
    Unknown,      // there is none
    DriveRoot,    // of a drive, or a share
    HoldsSystem,  // it is, or holds, the user's profile or Windows itself
    NotTemporary, // no folder on its path is called "temp" or "tmp"
};
TempObstacle tempObstacle(const Locations &locations);

// Whether the name ends in ".log" in any case. The pattern of the system would also take short names, and so
// "b.log1".
bool isLogName(QStringView name);

} // namespace tracks
