// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// Win32_PhysicalMemory.MemoryType; ends at DDR4 by design.
QString memoryTypeText(qint64 type);
// The type as the firmware tells it, which knows the newer ones: SMBIOS 3.7, table 7.18.2. Empty for 0 and
// for what is not in the table.
QString firmwareMemoryType(quint64 type);
// With the maker's name behind a JEDEC code that is known, letter by letter.
QString memoryMaker(const QString &manufacturer);

} // namespace systeminfo
