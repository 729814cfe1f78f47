// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Scan.h"
#include "platform/PipedProcess.h"

namespace decoder
{

// The decoder's whole life: answers requests until the other end is gone.
void serve(platform::ByteChannel &application, const lookalikes::Decode &decode);

} // namespace decoder
