// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WindowPlacement.h"

#include "app/WindowGeometry.h"
#include "platform/TopLevelWindows.h"

#include <QScreen>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace placement
{

namespace
{

QList<QRect> screenAreas(const QWidget &window)
{
    QList<QRect> screens;
    for (const QScreen *each : window.screen()->virtualSiblings())
        screens.append(each->availableGeometry());
    return screens;
}

} // namespace

void restore(QWidget &window)
{
    // The system uses physical pixels, Qt device-independent ones.
    const platform::ScreenMetrics metrics = platform::fullScreenClientArea();
    const auto logical = [&window](quint32 pixels) {
        return static_cast<quint32>(pixels / window.screen()->devicePixelRatio());
    };
    const WindowGeometry stored = storedGeometry();
    QList<QRect> others;
    for (const QScreen *each : window.screen()->virtualSiblings())
        if (each != window.screen())
            others.append(each->availableGeometry());
    const int titleHeight = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const WindowGeometry opened =
        isElsewhere(stored.rect(), titleHeight, window.screen()->availableGeometry(), others)
            ? stored
            : fitted(stored, logical(metrics.cx), logical(metrics.cy));
    window.setGeometry(opened.rect());
    if (storedMaximized())
        window.setWindowState(Qt::WindowMaximized);
}

void moveIntoView(QWidget &window)
{
    if (window.isMaximized())
        return;
    const int titleHeight =
        std::max(window.geometry().top() - window.frameGeometry().top(),
                 window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window));
    const QRect content = window.geometry();
    const QRect frame(window.frameGeometry().left(), content.top() - titleHeight,
                      window.frameGeometry().width(), content.height() + titleHeight);
    const QPoint place = visiblePosition(frame, titleHeight, screenAreas(window));
    if (place != frame.topLeft())
        window.setGeometry(content.translated(place - frame.topLeft()));
}

void store(const QWidget &window)
{
    const bool maximized = window.isMaximized();
    storeGeometry(WindowGeometry::of(maximized ? window.normalGeometry() : window.geometry()), maximized);
}

} // namespace placement
