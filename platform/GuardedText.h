// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

namespace platform
{

// Why the guard refused, as the end of a sentence: "in use by another program". Empty for Done.
QString guardedText(Guarded result);

} // namespace platform
