// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>

namespace lookalikes
{

// Where two images differ.
struct Difference {
    // The first image in faint grey with the differences in red, stronger for larger ones. Opaque.
    QImage picture;
    // The differing fraction of the image, 0 to 1.
    double share = 0;
};

// Channel differences up to this value are considered compression artefacts and not shown.
inline constexpr int differenceTolerance = 24;

// Compares at the first image's size, limited to `limit`; the other image is stretched to it. Transparency
// counts as a channel. A null image gives a null difference.
Difference differenceOf(const QImage &first, const QImage &second, QSize limit);

} // namespace lookalikes
