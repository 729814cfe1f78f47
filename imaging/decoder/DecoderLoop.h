// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/Examination.h"
#include "platform/PipedProcess.h"

#include <QString>

namespace decoder
{

// imaging::readImage() with a sharing mode that lets others rename and delete the file: decoding must not
// keep the user from moving an image to the recycle bin.
std::optional<imaging::LoadedImage> decodeFile(const QString &path,
                                               const imaging::BeforeDecode &beforeDecode = {});

// imaging::isTooLarge() of such a file.
bool isTooLarge(const QString &path);

// The main loop of the decoder process: answers requests until the other end is gone.
void serve(platform::ByteChannel &application, const imaging::Decode &decode);

} // namespace decoder
