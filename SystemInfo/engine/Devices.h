// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// Sections read from the registry's device lists. Those lists keep every device that was ever connected;
// absent ones are left out, or marked if none is present.
std::vector<Row> videoAdapterRows(core::RegistryView &registry); // at least one
Row monitorRow(Machine &machine);
Row mouseRow(Machine &machine);
Row keyboardRow(Machine &machine);

// "@monitor.inf,%pnp%;Generic PnP Monitor" -> "Generic PnP Monitor"
QString shownPart(const QString &deviceText);
// "8 GB" for whole gigabytes, else "1536 MB".
Value videoMemory(quint64 bytes);

} // namespace systeminfo
