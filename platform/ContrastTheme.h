// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform
{

// Whether one of Windows' contrast themes is active.
bool contrastTheme();

} // namespace platform
