// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

class QIODevice;

namespace heif
{

// "avif", "heic" or "heif" by the brands in the file type box at the device's position; empty for everything
// else, also for pictures in this container whose codec is not built in (JPEG 2000, AVC). Moves nothing.
QByteArray formatOf(QIODevice &device);

} // namespace heif
