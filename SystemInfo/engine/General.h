// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"
#include "SystemInfo/engine/System.h"

namespace systeminfo
{

Row processorRow(core::RegistryView &registry);
Row powerRow(const PowerStatus &power);
Row volumesRow(const std::vector<Volume> &volumes);
Row adaptersRow(const std::vector<Adapter> &adapters);
Row connectionsRow(const std::vector<Connection> &connections);
Row graphicsRow(const std::vector<GraphicsAdapter> &adapters);

// "Latitude 7490 with Intel Core i7-8650U, 16 GB of memory and 238 GB of disk space, running Windows 11 Pro
// for 3 days." Unknown parts are left out.
QString machineSummary(Machine &machine, const SystemFacts &facts, const WindowsRelease &release,
                       const std::vector<Volume> &volumes);

} // namespace systeminfo
