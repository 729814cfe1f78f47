// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImageIOHandler>

namespace webp
{

// What a viewer has to do, as the EXIF data in a WebP file says; nothing where there is none or it makes no
// sense. The device is left where it was.
QImageIOHandler::Transformations storedTransformation(QIODevice &device);

} // namespace webp
