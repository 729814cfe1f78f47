// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileProbe.h"

namespace platform
{

// The probe in use, the real one unless replaced. Any thread.
core::FileProbe &fileProbe();
// For tests, while no worker is running; null restores the real implementation. The object is not owned.
void setFileProbe(core::FileProbe *replacement);

} // namespace platform
