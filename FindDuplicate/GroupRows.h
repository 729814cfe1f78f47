// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"

#include <QString>

#include <vector>

namespace duplicates
{

// In which the groups are listed; ties keep the order of the report.
enum class GroupOrder {
    Report, // largest file first
    Freeable,
    Members,
    Name,
    Folder
};

// The indexes of the groups in that order, of which a member's name contains `search`, ignoring case.
std::vector<int> listedGroups(const std::vector<DuplicateGroup> &groups, const QString &search,
                              GroupOrder order);

} // namespace duplicates
