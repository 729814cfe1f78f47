// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QSet>
#include <QStringList>

namespace automation
{

struct DroppedImages {
    QStringList files;        // full paths; those of a folder are sorted by name
    QStringList emptyFolders; // folders without any image
    bool isWhole = true;      // no folder exceeded maxFolderEntries
};

// Limit for the entries of a folder that are checked; the rest is ignored.
inline constexpr int maxFolderEntries = 20'000;

// The images among dropped paths: files as they are, and for a folder the files directly in it that have one
// of `suffixes` ("png", lower case). Does disk I/O; returns early when cancelled.
DroppedImages droppedImages(const QStringList &paths, const QSet<QString> &suffixes,
                            const core::CancelFlag &cancel, int maxEntries = maxFolderEntries);

} // namespace automation
