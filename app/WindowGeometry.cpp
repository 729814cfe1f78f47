// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowGeometry.h"

#include "settings/Keys.h"
#include "settings/Settings.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr quint32 defaultPosition = 100;
constexpr quint32 minimumWidth = 986;
constexpr quint32 minimumHeight = 513;

// Square of the distance between a point and the nearest point of a rectangle.
qint64 distance(const QRect &rect, const QPoint &point)
{
    const qint64 dx = point.x() - std::clamp(point.x(), rect.left(), rect.right());
    const qint64 dy = point.y() - std::clamp(point.y(), rect.top(), rect.bottom());
    return dx * dx + dy * dy;
}

} // namespace

WindowGeometry fitted(WindowGeometry stored, quint32 cx, quint32 cy)
{
    WindowGeometry g = stored;
    if (g.x > cx)
        g.x = defaultPosition;
    if (g.y > cy)
        g.y = defaultPosition;

    if (g.width < minimumWidth)
        g.width = minimumWidth;
    else if (g.width > cx)
        g.width = cx;
    else if (g.x + g.width > cx)
        g.x = cx - g.width;

    if (g.height < minimumHeight)
        g.height = minimumHeight;
    else if (g.height > cx) // the width of the screen, deliberately
        g.height = cy;
    else if (g.y + g.height > cy)
        g.y = cy - g.height;
    return g;
}

QPoint visiblePosition(const QRect &frame, int titleHeight, const QList<QRect> &screens)
{
    const QRect title(frame.topLeft(), QSize(frame.width(), titleHeight));
    if (screens.isEmpty() ||
        std::ranges::any_of(screens, [&title](const QRect &screen) { return screen.intersects(title); }))
        return frame.topLeft();

    const QPoint middle = title.center();
    const QRect &home = *std::ranges::min_element(
        screens, {}, [&middle](const QRect &screen) { return distance(screen, middle); });
    // The later limit wins, so a title bar wider than the screen shows its left end.
    const int x = std::max(std::min(frame.x(), home.right() - frame.width() + 1), home.left());
    const int y = std::max(std::min(frame.y(), home.bottom() - titleHeight + 1), home.top());
    return QPoint(x, y);
}

WindowGeometry storedGeometry()
{
    WindowGeometry g;
    settings::readDword(settings::keys::root, u"posX", g.x);
    settings::readDword(settings::keys::root, u"posY", g.y);
    settings::readDword(settings::keys::root, u"width", g.width);
    settings::readDword(settings::keys::root, u"height", g.height);
    return g;
}

void storeGeometry(const WindowGeometry &geometry)
{
    settings::writeDword(settings::keys::root, u"posX", geometry.x);
    settings::writeDword(settings::keys::root, u"posY", geometry.y);
    settings::writeDword(settings::keys::root, u"width", geometry.width);
    settings::writeDword(settings::keys::root, u"height", geometry.height);
}
