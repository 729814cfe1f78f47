// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

// Runs a WMI query and adds a notice to the page if it failed. `about` names the subject: "the processor".
core::WmiAnswer ask(Machine &machine, Page &page, const core::WmiQuery &query, const QString &about,
                    const std::function<void(const core::WmiRow &)> &take);

} // namespace systeminfo
