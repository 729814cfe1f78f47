// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// What a drive reports about itself, in the structures of ntddstor.h and the NVMe standard. The bytes are
// untrusted: values that are truncated or out of range count as absent.
struct DriveDetails {
    QString bus;    // "NVMe"
    QString medium; // "Solid-state drive"
    std::optional<bool> removable;
    std::optional<int> celsius;
    std::optional<int> wearPercent; // of the rated endurance; may exceed 100
    std::optional<int> sparePercent;
    std::optional<quint64> powerOnHours;

    bool operator==(const DriveDetails &) const = default;
};

DriveDetails readDrive(const DriveAnswers &answers);
void addDriveDetails(Row &row, const DriveAnswers &answers);

} // namespace systeminfo
