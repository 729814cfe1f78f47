// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

struct CpuFacts {
    QString name, description, manufacturer, socket, uniqueId;
    Value dataWidth, speed, l1Cache, l2Cache, l3Cache, cores, threads, virtualization, monitorExtensions;
    std::vector<QString> processors; // all sockets, by name
};

// Takes over one WMI row. With several processors the last one wins; fields that it lacks keep the previous
// value.
void readProcessor(CpuFacts &facts, const core::WmiRow &row);
// The two units differ by design: 512 KB of L3 cache read "512 MB".
Value secondLevelCache(quint64 kilobytes);
Value thirdLevelCache(quint64 kilobytes);

} // namespace systeminfo
