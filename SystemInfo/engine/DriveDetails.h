// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// What a drive says of itself in the structures of ntddstor.h and of the NVMe standard. The bytes come
// from a device and are taken for nothing more than that: what is too short or out of range reads as absent.
struct DriveDetails {
    QString bus;    // "NVMe"
    QString medium; // "Solid-state drive"
    std::optional<bool> removable;
    std::optional<int> celsius;
    std::optional<int> wearPercent; // of the life that the maker planned; may be over 100
    std::optional<int> sparePercent;
    std::optional<quint64> powerOnHours;

    bool operator==(const DriveDetails &) const = default;
};

DriveDetails readDrive(const DriveAnswers &answers);
void addDriveDetails(Row &row, const DriveAnswers &answers);

} // namespace systeminfo
