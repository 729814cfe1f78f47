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

// Why a trace that was found is not handed to the clearing.
enum class Keep : quint8 {
    No,
    Database,           // part of a database: the rest of it would be damaged, or lose what was written last
    UsedToday,          // a temporary file younger than a day
    NeedsAdministrator, // the user has no right to remove it
};

// One file as it was found. `name` points into the list that it came from.
struct FileTrace {
    QStringView name;
    quint32 folder = 0; // index
    quint32 attributes = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
    Keep keep = Keep::No;
};

// The files of one item, in the order in which they are cleared. All names share one buffer: temporary
// folders hold files by the hundred thousand.
class FileTraces
{
public:
    // `trustedRoot`: see FileSource. Returns the folder's index.
    quint32 addFolder(const QString &path, const QString &trustedRoot);
    // Copies the name.
    void add(quint32 folder, const core::DirectoryEntry &entry, Keep keep);
    void setKeep(std::size_t index, Keep keep) { m_records[index].keep = keep; }

    std::size_t size() const { return m_records.size(); }
    // Valid until the list changes or dies.
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

// Why an item shows less than there may be.
enum class Obstacle {
    None,
    NeedsAdministrator, // the folder cannot be listed with the user's rights
    ThroughLink,        // the folder lies behind a link, so it is not the one that is meant
    TempDriveRoot,      // see TempObstacle, here and below
    TempHoldsSystem,
    TempNotTemporary,
    TempUnknown,
};

// What was found of one item. Rows are numbered through: the files first, then the values of the registry.
struct ItemTraces {
    bool scanned = false;
    FileTraces files;
    std::vector<RegistryTrace> values;
    quint64 bytes = 0; // of the files
    Obstacle obstacle = Obstacle::None;
    QString obstacleFolder;
    int unreadableFolders = 0; // below the item's folders; what is in them is not counted

    std::size_t count() const { return files.size() + values.size(); }
    bool isFile(std::size_t row) const { return row < files.size(); }
    const RegistryTrace &valueAt(std::size_t row) const { return values[row - files.size()]; }
    Keep keep(std::size_t row) const { return isFile(row) ? files.at(row).keep : Keep::No; }
    quint64 sizeOf(std::size_t row) const;
    // Of a file its path, of a value "HKEY_CURRENT_USER\key\name".
    QString pathOf(std::size_t row) const;
};

// Frozen when the scan ends: what is cleared is on this list.
struct ScanResult {
    std::array<ItemTraces, itemCount> items;

    const ItemTraces &operator[](Item item) const { return items[indexOf(item)]; }
    ItemTraces &operator[](Item item) { return items[indexOf(item)]; }
};

// What the user took out of the list. One entry a row; an empty list: nothing was.
using LeftOut = std::array<std::vector<bool>, itemCount>;

bool isLeftOut(const LeftOut &leftOut, Item item, std::size_t row);
// Whether the row is to be cleared.
bool isChosen(const ScanResult &result, const LeftOut &leftOut, Item item, std::size_t row);

// The same entries left out of a newer list.
LeftOut carriedOver(const ScanResult &from, const LeftOut &leftOut, const ScanResult &to);

// The text that a value of the registry stands for: the command without the mark at its end, the words
// searched for, the name of the document. Empty when it is no text (an order list).
QString valueText(Item item, const RegistryValue &value);

// Whether this value keeps the order of the others and is no entry of its own ("MRUList", "MRUListEx").
bool isOrderList(QStringView valueName);

} // namespace tracks
