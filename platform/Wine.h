// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform
{

// Whether this is Wine and no Windows, for the few calls whose answer is another one there. Any thread.
bool isWine();

} // namespace platform
