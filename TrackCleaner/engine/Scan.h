// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"
#include "TrackCleaner/engine/Traces.h"
#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"
#include "core/FileProbe.h"

namespace tracks
{

// Tells whether the user may delete single files. Any thread.
class RemovalRights
{
public:
    virtual ~RemovalRights() = default;
    // Also true if it cannot be determined.
    virtual bool mayRemove(const QString &file) = 0;
};

// What a scan reads from; everything must outlive the scan.
struct ScanWorld {
    core::DirectoryEnumerator &enumerator;
    core::FileProbe &probe;
    TraceRegistry &registry;
    RemovalRights &rights;
};

struct ScanOptions {
    ItemFlags items{};
    Locations locations;
    bool keepUsedToday = true; // keep temporary files younger than a day
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
    virtual void traceFound(int tracesSoFar) = 0; // total of all items
    // Called when an item is complete; not if the scan was cancelled within it.
    virtual void itemScanned(Item item, const ItemTraces &traces) = 0;
};

// Scans for the traces of the items whose flag is set, in catalogue order. Read-only. Links to folders are
// not followed, and a folder that lies behind a link is not listed.
ScanResult scanTraces(const ScanOptions &options, const ScanWorld &world, ScanListener &listener,
                      const core::CancelFlag &cancel);

} // namespace tracks
