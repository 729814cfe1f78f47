// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

// Where the main window stands and how large its client area is, as the registry holds it: unsigned, so that
// a place to the left of or above the primary screen is a very large number.
struct WindowGeometry {
    quint32 x = 100;
    quint32 y = 100;
    quint32 width = 986;
    quint32 height = 513;

    bool operator==(const WindowGeometry &) const = default;

    QRect rect() const
    {
        return QRect(static_cast<int>(x), static_cast<int>(y), static_cast<int>(width),
                     static_cast<int>(height));
    }
    static WindowGeometry of(const QRect &rect)
    {
        return {static_cast<quint32>(rect.x()), static_cast<quint32>(rect.y()),
                static_cast<quint32>(rect.width()), static_cast<quint32>(rect.height())};
    }
};

// The stored geometry fitted to a screen whose client area is cx by cy, in the arithmetic of unsigned 32-bit
// numbers. The height is compared with the width of the screen, and a window higher than the screen moves up
// beyond its edge: both are the long-standing behaviour of stored geometries. visiblePosition() catches what
// would leave the user without a title bar.
WindowGeometry fitted(WindowGeometry stored, quint32 cx, quint32 cy);

// Whether a window with this content was left on one of the other screens: its size is not below the
// smallest, and more of its title bar is seen there than on the home screen. Such a window opens where it was
// left; visiblePosition() then moves what lies over an edge.
bool isElsewhere(const QRect &content, int titleHeight, const QRect &home, const QList<QRect> &others);

// The position for a window of this frame (title bar of `titleHeight` and borders included): within the
// screen on which most of the title bar lies, or the nearest one, as far as it fits there. Of one that is
// wider than the screen the left end of the title bar is seen, of one that is higher its title bar.
QPoint visiblePosition(const QRect &frame, int titleHeight, const QList<QRect> &screens);

// The registry's values `posX`, `posY`, `width` and `height` of the root key; what is absent has the default.
WindowGeometry storedGeometry();
bool storedMaximized(); // `maximized`
void storeGeometry(const WindowGeometry &geometry, bool maximized = false);
