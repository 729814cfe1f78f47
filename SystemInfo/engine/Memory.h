// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// Win32_PhysicalMemory.MemoryType; ends at DDR4 by design.
QString memoryTypeText(qint64 type);
// The SMBIOS memory type, which covers newer ones: SMBIOS 3.7, table 7.18.2. Empty for 0 and unlisted
// numbers.
QString firmwareMemoryType(quint64 type);
// Replaces a known JEDEC code by the manufacturer's name.
QString memoryMaker(const QString &manufacturer);

} // namespace systeminfo
