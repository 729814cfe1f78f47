// SPDX-License-Identifier: GPL-3.0-or-later
// Reads codes with a decoder that shares no code with the encoder. Any thread.
#pragma once

#include <QImage>
#include <QString>

namespace qr
{

// True if the image contains a code with this text. Transparent pixels count as white. Tried at the original
// size and smaller: the decoder works best with modules of a few pixels, as a phone sees them.
// `pixelsPerModule` is that of the image.
bool reads(const QImage &picture, const QString &text, int pixelsPerModule);

} // namespace qr
