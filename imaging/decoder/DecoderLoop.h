// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/Examination.h"
#include "platform/PipedProcess.h"

#include <QString>

namespace decoder
{

// imaging::readImage() of a file that others may rename and remove meanwhile: the user should not be kept
// from moving a picture to the recycle bin by this program's own look at it.
std::optional<imaging::LoadedImage> decodeFile(const QString &path,
                                               const imaging::BeforeDecode &beforeDecode = {});

// imaging::isTooLarge() of such a file.
bool isTooLarge(const QString &path);

// The decoder's whole life: answers requests until the other end is gone.
void serve(platform::ByteChannel &application, const imaging::Decode &decode);

} // namespace decoder
