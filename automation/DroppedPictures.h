// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QSet>
#include <QStringList>

namespace automation
{

struct DroppedPictures {
    QStringList files;        // whole paths, those of a folder sorted by name
    QStringList emptyFolders; // folders in which no picture was found
    bool isWhole = true;      // no folder held more than maxFolderEntries
};

// Files of a folder that are looked at; the rest of it is left out.
inline constexpr int maxFolderEntries = 20'000;

// The pictures that were dropped: each file as it is, and of each folder the files in it (not of its
// subfolders) with one of `suffixes` ("png", small letters). Asks the disk; stops early when cancelled.
DroppedPictures droppedPictures(const QStringList &paths, const QSet<QString> &suffixes,
                                const core::CancelFlag &cancel, int maxEntries = maxFolderEntries);

} // namespace automation
