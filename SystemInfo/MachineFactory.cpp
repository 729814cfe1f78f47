// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/MachineFactory.h"

#include "SystemInfo/machine/WindowsMachine.h"

namespace systeminfo
{

namespace
{

MachineFactory &replacement()
{
    static MachineFactory factory;
    return factory;
}

std::unique_ptr<Machine> thisMachine(const core::CancelFlag &cancel)
{
    return std::make_unique<WindowsMachine>(cancel);
}

} // namespace

MachineFactory machineFactory()
{
    return replacement() ? replacement() : MachineFactory(thisMachine);
}

void setMachineFactory(MachineFactory factory)
{
    replacement() = std::move(factory);
}

} // namespace systeminfo
