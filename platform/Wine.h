// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace platform
{

// Whether this is Wine rather than Windows, for the few calls that behave differently. Any thread.
bool isWine();

} // namespace platform
