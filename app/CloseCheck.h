// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>

class FLWidget;

// Asks every busy page to stop, in the given order. The window may only close if no page was busy. A page
// that stops at once counts as busy too, since it may have something to show to the user.
struct CloseCheck {
    bool mayClose = true;
    QStringList stopping; // what is being stopped, for the user
};
CloseCheck askPagesToStop(const QList<FLWidget *> &pages);
