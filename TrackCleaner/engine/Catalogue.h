// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

// What the track cleaner can clear, and where Windows keeps it.
namespace tracks
{

// In scan and clearing order.
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

// One flag per item, in catalogue order.
using ItemFlags = std::array<bool, itemCount>;

struct CatalogueRow {
    Item item;
    Group group;
    const char *label; // to be translated in the context "tracks"
    const char *stem;  // prefix of the object names: stem + "CheckBox", "Label", "Button"
    bool sized;        // the item's label shows a size after the count
};

const std::array<CatalogueRow, itemCount> &catalogue();

// The folders from which all locations are derived, without a trailing separator. An empty one is unknown,
// and nothing is scanned there.
struct Locations {
    QString profile;
    QString windows;
    QString programData;     // common application data
    QString temporary;       // GetTempPathW, with long names
    QString temporaryTarget; // `temporary` with all links resolved
};

enum class Pattern { Everything, Logs };

// A folder whose files are traces.
struct FileSource {
    QString folder;
    // The folder that is trusted not to be redirected. No link may lie between it and a file.
    QString trustedRoot;
    Pattern pattern = Pattern::Everything;
    bool recursive = true;
    bool privileged = false; // the user may lack the right to delete here
};

// In clearing order. Empty if the location is unknown, or for a registry item.
std::vector<FileSource> fileSources(Item item, const Locations &locations);

// A key below HKEY_CURRENT_USER whose values are traces.
struct KeySource {
    QString parent;
    QString name;
    bool withSubkeys = false; // values of its subkeys too

    QString path() const { return parent + QLatin1Char('\\') + name; }
};

std::optional<KeySource> keySource(Item item);

// Why the temporary folder reported by Windows must not be emptied.
enum class TempObstacle {
    None,
    Unknown,      // it is not known
    DriveRoot,    // root of a drive or share
    HoldsSystem,  // it is or contains the user's profile or Windows
    NotTemporary, // no folder on its path is named "temp" or "tmp"
};
TempObstacle tempObstacle(const Locations &locations);

// Whether the name ends in ".log", ignoring case. The Win32 pattern "*.log" would also match short names, and
// thus "b.log1".
bool isLogName(QStringView name);

} // namespace tracks
