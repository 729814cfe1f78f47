// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"
#include "TrackCleaner/engine/Traces.h"
#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"
#include "core/FileProbe.h"

namespace tracks
{

// Whether the user may remove single files. Any thread.
class RemovalRights
{
public:
    virtual ~RemovalRights() = default;
    // True also when it cannot be told.
    virtual bool mayRemove(const QString &file) = 0;
};

// What a scan looks at; everything outlives the scan.
struct ScanWorld {
    core::DirectoryEnumerator &enumerator;
    core::FileProbe &probe;
    TraceRegistry &registry;
    RemovalRights &rights;
};

struct ScanOptions {
    ItemFlags items{};
    Locations locations;
    bool keepUsedToday = true; // temporary files younger than a day
    quint64 now = 0;           // FILETIME
    int readAheadThreads = 0;  // see core::WalkOptions
};

// Called on the thread of scanTraces().
class ScanListener
{
public:
    virtual ~ScanListener() = default;
    virtual void itemBegins(Item item) = 0;
    virtual void folderEntered(const QString &path) = 0;
    virtual void traceFound(int tracesSoFar) = 0; // of all items
    // The item is complete; not called when the scan was cancelled within it.
    virtual void itemScanned(Item item, const ItemTraces &traces) = 0;
};

// Looks for the traces of the items whose flag is set, in the catalogue's order. Reads only. Links to folders
// are not entered, and a folder that can be reached through a link only is not listed.
ScanResult scanTraces(const ScanOptions &options, const ScanWorld &world, ScanListener &listener,
                      const core::CancelFlag &cancel);

} // namespace tracks
