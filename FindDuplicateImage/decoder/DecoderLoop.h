// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicateImage/engine/Scan.h"
#include "platform/PipedProcess.h"

namespace decoder
{

// core::readImage() of a file that others may rename and remove meanwhile: the user should not be kept from
// moving a picture to the recycle bin by this program's own look at it.
std::optional<core::LoadedImage> decodeFile(const QString &path, const core::BeforeDecode &beforeDecode = {});

// The decoder's whole life: answers requests until the other end is gone.
void serve(platform::ByteChannel &application, const lookalikes::Decode &decode);

} // namespace decoder
