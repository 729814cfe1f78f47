// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSize>

namespace conversion
{

// See adaptedMetadata(). Empty if it is not EXIF. Nothing is moved: offsets and lengths stay those of `exif`,
// since camera makers store absolute offsets in private fields.
QByteArray adaptedExif(QByteArray exif, const QSize &size, bool keepPlace);

// 1 to 8; 0 if there is none.
int exifOrientation(const QByteArray &exif);

} // namespace conversion
