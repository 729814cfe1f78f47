// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"
#include "ConvertImage/engine/metadata/Metadata.h"

#include <QIODevice>
#include <QString>

namespace conversion
{

struct WriteResult {
    QString problem; // empty on success
    QString note;    // for the user: metadata that the format cannot store
};
// Writes a rendered image in any format other than PDF. What the format cannot store is converted first:
// transparency to white, a colour profile to sRGB. The quality is always set for JPEG, for other formats only
// if the user chose one. `device` must be open for reading and writing. Any thread.
WriteResult writePicture(QIODevice &device, const QImage &image, const Encoding &encoding,
                         const Metadata &metadata);

// The image as it is handed to the format's writer.
QImage preparedFor(Target target, const QImage &image);

// Verifies that the written file can be opened and has the right size. Returns an empty string, or the
// reason.
QString checkWritten(QIODevice &device, Target target, const QSize &size);

// The approximate file size: small images are encoded as a whole, large ones in part.
qint64 estimatedBytes(const QImage &image, const Encoding &encoding);

} // namespace conversion
