// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSet>

// Pages with a job that must not be walked away from hold the navigation locked until the job has ended. A
// page that is closed or destroyed meanwhile lets go by that.
class NavigationLock : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void hold(QObject *page);
    void release(QObject *page);
    bool isLocked() const { return !m_holders.isEmpty(); }

signals:
    void lockedChanged(bool locked);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QSet<QObject *> m_holders;
};
