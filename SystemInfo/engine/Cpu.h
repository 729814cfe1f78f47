// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

struct CpuFacts {
    QString name, description, manufacturer, socket, uniqueId;
    Value dataWidth, speed, l1Cache, l2Cache, l3Cache, cores, threads, virtualization, monitorExtensions;
    std::vector<QString> processors; // of all sockets, by name
};

// A processor of the answer. With several the last one stands in the page, and what it does not tell keeps
// the value of the one before.
void readProcessor(CpuFacts &facts, const core::WmiRow &row);
// The second and third level differ on purpose: 512 KB of the third level read "512 MB".
Value secondLevelCache(quint64 kilobytes);
Value thirdLevelCache(quint64 kilobytes);

} // namespace systeminfo
