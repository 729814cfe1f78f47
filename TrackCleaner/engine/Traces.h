// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Catalogue.h"
#include "TrackCleaner/engine/TraceRegistry.h"
#include "core/DirectoryEnumerator.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <string>
#include <vector>

namespace tracks
{

// Why a found trace must not be cleared.
enum class Keep : quint8 {
    No,
    Database,           // part of a database, which would be damaged or lose recent data
    UsedToday,          // a temporary file younger than a day
    NeedsAdministrator, // the user has no right to delete it
};

// One file as it was found. `name` points into the list it came from.
struct FileTrace {
    QStringView name;
    quint32 folder = 0; // index of the folder
    quint32 attributes = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
    Keep keep = Keep::No;
};

// The files of one item in clearing order. All names share one buffer: temporary folders may contain a
// hundred thousand files.
class FileTraces
{
public:
    // `trustedRoot`: see FileSource. Returns the folder's index.
    quint32 addFolder(const QString &path, const QString &trustedRoot);
    // Copies the name.
    void add(quint32 folder, const core::DirectoryEntry &entry, Keep keep);
    void setKeep(std::size_t index, Keep keep) { m_records[index].keep = keep; }

    std::size_t size() const { return m_records.size(); }
    // Valid until the list changes or is destroyed.
    FileTrace at(std::size_t index) const;
    QString path(std::size_t index) const;
    const QString &folder(quint32 index) const { return m_folders[index].path; }
    const QString &trustedRoot(quint32 folder) const { return m_folders[folder].trustedRoot; }
    std::size_t folderCount() const { return m_folders.size(); }

private:
    struct Folder {
        QString path;
        QString trustedRoot;
    };
    struct Record {
        std::size_t nameOffset;
        quint64 size;
        quint64 lastWriteTime;
        quint32 folder;
        quint32 attributes;
        quint16 nameLength; // Windows allows 255
        Keep keep;
    };
    std::vector<Folder> m_folders;
    std::u16string m_names;
    std::vector<Record> m_records;
};

struct RegistryTrace {
    QString key;               // below HKEY_CURRENT_USER
    quint64 lastWriteTime = 0; // of the key
    RegistryValue value;
};

// Why an item may show less than there is.
enum class Obstacle {
    None,
    NeedsAdministrator, // the folder cannot be listed with the user's rights
    ThroughLink,        // the folder lies behind a link, so it is not the intended one
    TempDriveRoot,      // this and the next two: see TempObstacle
    TempHoldsSystem,
    TempNotTemporary,
    TempUnknown,
};

// The traces of one item. Row numbers count the files first, then the registry values.
struct ItemTraces {
    bool scanned = false;
    FileTraces files;
    std::vector<RegistryTrace> values;
    quint64 bytes = 0; // total of the files
    Obstacle obstacle = Obstacle::None;
    QString obstacleFolder;
    int unreadableFolders = 0; // below the item's folders; their contents are not counted

    std::size_t count() const { return files.size() + values.size(); }
    bool isFile(std::size_t row) const { return row < files.size(); }
    const RegistryTrace &valueAt(std::size_t row) const { return values[row - files.size()]; }
    Keep keep(std::size_t row) const { return isFile(row) ? files.at(row).keep : Keep::No; }
    quint64 sizeOf(std::size_t row) const;
    // The path of a file, or "HKEY_CURRENT_USER\key\name" for a value.
    QString pathOf(std::size_t row) const;
};

// Immutable after the scan: only what is on this list can be cleared.
struct ScanResult {
    std::array<ItemTraces, itemCount> items;

    const ItemTraces &operator[](Item item) const { return items[indexOf(item)]; }
    ItemTraces &operator[](Item item) { return items[indexOf(item)]; }
};

// What the user excluded from the list. One entry per row, or an empty list if nothing was.
using LeftOut = std::array<std::vector<bool>, itemCount>;

bool isLeftOut(const LeftOut &leftOut, Item item, std::size_t row);
// Whether the row is to be cleared.
bool isChosen(const ScanResult &result, const LeftOut &leftOut, Item item, std::size_t row);

// Transfers the exclusions to a newer list.
LeftOut carriedOver(const ScanResult &from, const LeftOut &leftOut, const ScanResult &to);

// The readable content of a registry value: the command without its end mark, the search words, the document
// name. Empty if it has none (an order list).
QString valueText(Item item, const RegistryValue &value);

// Whether this value stores the order of the others and is no entry itself ("MRUList", "MRUListEx").
bool isOrderList(QStringView valueName);

} // namespace tracks
