// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

#include "core/CancelFlag.h"

#include <functional>
#include <memory>

namespace systeminfo
{

// Creates the Machine that a page reads from, on the thread that reads it. `cancel` outlives it.
using MachineFactory = std::function<std::unique_ptr<Machine>(const core::CancelFlag &cancel)>;

// This computer, unless a test has set another factory; setting an empty function restores it. Interface
// thread.
MachineFactory machineFactory();
void setMachineFactory(MachineFactory factory);

} // namespace systeminfo
