// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// Sections that are read from the registry's lists of devices. Those lists keep every device that was ever
// connected; one that is absent is left out, or marked when none is there.
std::vector<Row> videoAdapterRows(core::RegistryView &registry); // at least one
Row monitorRow(Machine &machine);
Row mouseRow(Machine &machine);
Row keyboardRow(Machine &machine);

// "@monitor.inf,%pnp%;Generic PnP Monitor" -> "Generic PnP Monitor"
QString shownPart(const QString &deviceText);
// "8 GB" for whole gigabytes, else "1536 MB".
Value videoMemory(quint64 bytes);

} // namespace systeminfo
