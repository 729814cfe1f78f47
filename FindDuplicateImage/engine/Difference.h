// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>

namespace lookalikes
{

// Where two pictures differ.
struct Difference {
    // The first picture in faint grey, with what differs in red: the stronger, the more. Opaque.
    QImage picture;
    // How much of it differs, from 0 to 1.
    double share = 0;
};

// Differences of a channel up to this value are taken for the traces of compression, and not shown.
inline constexpr int differenceTolerance = 24;

// Compares at the first picture's size, at most `limit`; the other one is stretched to it. Transparency
// counts as a channel. A null picture gives a null difference.
Difference differenceOf(const QImage &first, const QImage &second, QSize limit);

} // namespace lookalikes
