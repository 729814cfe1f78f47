// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSize>

namespace conversion
{

// See adaptedMetadata(). Empty for what is no EXIF. Offsets and lengths of the result are those of `exif`,
// since makers of cameras hide absolute offsets in fields that nobody else knows.
QByteArray adaptedExif(QByteArray exif, const QSize &size, bool keepPlace);

// 1 to 8; 0 where none is stated.
int exifOrientation(const QByteArray &exif);

} // namespace conversion
