// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform
{

// Whether the user works with one of Windows' contrast themes.
bool contrastTheme();

} // namespace platform
