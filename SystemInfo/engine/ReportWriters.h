// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Report.h"

namespace systeminfo
{

// Called by writeReport().
QByteArray htmlReport(const Report &report);
QByteArray jsonReport(const Report &report);

} // namespace systeminfo
