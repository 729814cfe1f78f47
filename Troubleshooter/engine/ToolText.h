// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"

namespace repair
{

// One sentence about how a tool ended; `done` if it succeeded.
QString toolText(const ToolRun &run, const QString &done);

} // namespace repair
