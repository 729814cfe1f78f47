// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Traces.h"
#include "core/CancelFlag.h"

#include <memory>
#include <vector>

namespace tracks
{

// Outcome for a trace.
enum class Outcome {
    Removed,
    Vanished,    // it was already gone
    Changed,     // no longer what was listed: written to or replaced
    ThroughLink, // the path leads somewhere else now
    InUse,
    ReadOnly,
    Denied,     // the user has no right to remove it
    HasSubkeys, // for a value: its key has subkeys that are no traces, and can only be removed as a whole
    Failed,
};

struct FileToRemove {
    QString root; // the trusted root: no link may lie between it and the file
    QString path;
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
    quint32 attributes = 0;
};

// Deletes one listed file permanently, or nothing. Called on the thread of clearTraces().
class TraceRemover
{
public:
    virtual ~TraceRemover() = default;
    virtual Outcome remove(const FileToRemove &file) = 0;
};

// What to clear: the rows of these items that are neither kept nor left out.
struct ClearPlan {
    std::shared_ptr<const ScanResult> found;
    LeftOut leftOut;
    ItemFlags items{};
};

struct ClearTotals {
    int files = 0;
    int values = 0;
    quint64 bytes = 0; // of the files

    int all() const { return files + values; }
};
ClearTotals totalsOf(const ClearPlan &plan);

// A row that should have been cleared but still exists.
struct Stayed {
    Item item;
    std::size_t row; // in the plan's list
    Outcome why;
};

struct ClearResult {
    ItemFlags done{};
    int deletedFiles = 0;
    quint64 deletedBytes = 0;
    int deletedValues = 0;
    std::vector<Stayed> stayed;
    bool cancelled = false;
};

// Called on the thread of clearTraces().
class ClearListener
{
public:
    virtual ~ClearListener() = default;
    virtual void itemBegins(Item item) = 0;
    // Called before each file. `done` counts files.
    virtual void fileBegins(const QString &path, int done) = 0;
    virtual void itemCleared(Item item) = 0;
};

// Clears the plan's items in catalogue order. The cancel flag is tested before each item and between files;
// the current item is still reported as cleared, later ones are not started.
ClearResult clearTraces(const ClearPlan &plan, TraceRegistry &registry, TraceRemover &remover,
                        ClearListener &listener, const core::CancelFlag &cancel);

} // namespace tracks
