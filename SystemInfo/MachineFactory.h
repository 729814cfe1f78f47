// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

#include "core/CancelFlag.h"

#include <functional>
#include <memory>

namespace systeminfo
{

// Makes the machine that a page reads, on the thread that reads it. `cancel` outlives it.
using MachineFactory = std::function<std::unique_ptr<Machine>(const core::CancelFlag &cancel)>;

// This machine, unless a test put another one in its place; an empty function puts it back. Interface thread.
MachineFactory machineFactory();
void setMachineFactory(MachineFactory factory);

} // namespace systeminfo
