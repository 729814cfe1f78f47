// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"

namespace repair
{

// How a program of Windows ended, in a sentence; `done` for one that succeeded.
QString toolText(const ToolRun &run, const QString &done);

} // namespace repair
