// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowGeometry.h"

#include "settings/Keys.h"
#include "settings/Values.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr quint32 defaultPosition = 100;
constexpr quint32 minimumWidth = 986;
constexpr quint32 minimumHeight = 513;
constexpr settings::Flag maximizedFlag{settings::keys::root, u"maximized", false};

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
    else if (g.height > cx) // compared with the screen's width, deliberately
        g.height = cy;
    else if (g.y + g.height > cy)
        g.y = cy - g.height;
    return g;
}

bool isElsewhere(const QRect &content, int titleHeight, const QRect &home, const QList<QRect> &others)
{
    const QRect title(content.x(), content.y() - titleHeight, content.width(), titleHeight);
    const auto seenOn = [&title](const QRect &screen) {
        const QRect seen = screen & title;
        return qint64(seen.width()) * seen.height();
    };
    return content.width() >= static_cast<int>(minimumWidth) &&
           content.height() >= static_cast<int>(minimumHeight) &&
           std::ranges::any_of(others, [&](const QRect &other) { return seenOn(other) > seenOn(home); });
}

QPoint visiblePosition(const QRect &frame, int titleHeight, const QList<QRect> &screens)
{
    if (screens.isEmpty())
        return frame.topLeft();
    const QRect title(frame.topLeft(), QSize(frame.width(), titleHeight));
    const auto seenOf = [&title](const QRect &screen) {
        const QRect seen = screen & title;
        return seen.isEmpty() ? -distance(screen, title.center()) : qint64(seen.width()) * seen.height();
    };
    const QRect &home = *std::ranges::max_element(screens, {}, seenOf);
    // The later limit takes precedence.
    const int x = std::max(std::min(frame.x(), home.right() - frame.width() + 1), home.left());
    const int y = std::max(std::min(frame.y(), home.bottom() - frame.height() + 1), home.top());
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

bool storedMaximized()
{
    return maximizedFlag.read();
}

void storeGeometry(const WindowGeometry &geometry, bool maximized)
{
    settings::writeDword(settings::keys::root, u"posX", geometry.x);
    settings::writeDword(settings::keys::root, u"posY", geometry.y);
    settings::writeDword(settings::keys::root, u"width", geometry.width);
    settings::writeDword(settings::keys::root, u"height", geometry.height);
    maximizedFlag.write(maximized);
}
