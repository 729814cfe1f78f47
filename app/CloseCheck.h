// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>

class FLWidget;

// Asks every busy page to stop, in the order given. The window may close only when no page was busy; a page
// that stops at once counts as well, since what it ran may have something to say to the user.
struct CloseCheck {
    bool mayClose = true;
    QStringList stopping; // what is being stopped, for the user
};
CloseCheck askPagesToStop(const QList<FLWidget *> &pages);
