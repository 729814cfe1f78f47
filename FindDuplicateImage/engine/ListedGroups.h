// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/ImageRecord.h"

#include <QString>

#include <vector>

namespace lookalikes
{

// In which the groups are listed; ties keep the order of the report.
enum class GroupOrder {
    Report,   // see sortForReport()
    Freeable, // see freeableBytes(), most first
    Members,  // most first
    Name,     // of the first member, ignoring case
    Folder    // of the first member, ignoring case
};

// The indexes of the groups in that order, of which a member's name, or its folder as far as it lies below
// the scanned `root`, contains `search`, ignoring case.
std::vector<int> listedGroups(const std::vector<ImageGroup> &groups, const QString &root,
                              const QString &search, GroupOrder order);

} // namespace lookalikes
