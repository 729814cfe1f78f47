// SPDX-License-Identifier: GPL-3.0-or-later
// Reads codes by a decoder that shares nothing with the encoder. Any thread.
#pragma once

#include <QImage>
#include <QString>

namespace qr
{

// True when the picture holds a code, and it is of this text. What is transparent counts as white. Tried as
// it is, and smaller: a phone sees modules of a few pixels, and so does the decoder best. `pixelsPerModule`
// is of the picture.
bool reads(const QImage &picture, const QString &text, int pixelsPerModule);

} // namespace qr
