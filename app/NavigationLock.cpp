// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/NavigationLock.h"

#include <QEvent>

void NavigationLock::hold(QObject *page)
{
    if (m_holders.contains(page))
        return;
    m_holders.insert(page);
    if (page) {
        page->installEventFilter(this);
        connect(page, &QObject::destroyed, this, &NavigationLock::release);
    }
    if (m_holders.size() == 1)
        emit lockedChanged(true);
}

void NavigationLock::release(QObject *page)
{
    if (!m_holders.remove(page))
        return;
    if (page) {
        page->removeEventFilter(this);
        page->disconnect(this);
    }
    if (m_holders.isEmpty())
        emit lockedChanged(false);
}

bool NavigationLock::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close)
        release(watched);
    return false;
}
