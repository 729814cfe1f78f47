// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/FileRecord.h"

#include <QString>

#include <vector>

namespace duplicates
{

// What the list of groups knows of a group beside the group itself.
struct GroupRow {
    quint64 freeableBytes = 0;   // by removing all members but one
    bool firstFileExists = true; // as far as it was looked at
};

std::vector<GroupRow> groupRows(const std::vector<DuplicateGroup> &groups);

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
