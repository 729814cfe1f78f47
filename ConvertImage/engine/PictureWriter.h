// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"
#include "ConvertImage/engine/metadata/Metadata.h"

#include <QIODevice>
#include <QString>

namespace conversion
{

struct WriteResult {
    QString problem; // empty: it was written
    QString note;    // for the user: what the file has no room for
};
// Writes a rendered picture in a format of its own file (any but PDF). What the format cannot hold is changed
// first, so that nothing turns black or loses its colours: transparency becomes white, a colour profile sRGB.
// The quality is set for JPEG, and for other formats where the user chose one. `device` is open for writing
// and reading. Any thread.
WriteResult writePicture(QIODevice &device, const QImage &image, const Encoding &encoding,
                         const Metadata &metadata);

// As it is handed to the format's writer.
QImage preparedFor(Target target, const QImage &image);

// Whether what was written can be opened, and has the size of what was rendered. Empty, or the reason.
QString checkWritten(QIODevice &device, Target target, const QSize &size);

// About how many bytes the file will have: small pictures are encoded, of large ones a part.
qint64 estimatedBytes(const QImage &image, const Encoding &encoding);

} // namespace conversion
