// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CloseCheck.h"

#include "widgets/FLWidget.h"

CloseCheck askPagesToStop(const QList<FLWidget *> &pages)
{
    CloseCheck check;
    for (FLWidget *page : pages) {
        if (!page->isBusy())
            continue;
        check.mayClose = false;
        const QString text = page->busyText(); // read first, since the job may end at once
        page->requestStop();
        if (!text.isEmpty())
            check.stopping.append(text);
    }
    return check;
}
