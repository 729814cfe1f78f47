// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FLWidget.h"

#include "widgets/JobHost.h"

FLWidget::~FLWidget()
{
    for (JobHost *job : std::as_const(m_running))
        job->m_form = nullptr; // owned by a child widget, which is destroyed later
}

void FLWidget::requestStop()
{
    m_closeWanted = isBusy();
    const QList<JobHost *> running =
        m_running; // a copy: a job that ends at once removes itself from the list
    for (JobHost *job : running)
        job->cancel();
}

QString FLWidget::busyText() const
{
    return m_running.isEmpty() ? QString() : m_running.front()->busyText();
}

void FLWidget::jobBegan(JobHost *job, bool byTheUser)
{
    if (byTheUser)
        m_closeWanted = false; // the user has started another job instead
    m_running.append(job);
    if (m_running.size() == 1)
        emit showToolbarSignal(false);
}

void FLWidget::jobEnded(JobHost *job)
{
    if (m_running.removeOne(job) && m_running.isEmpty())
        emit showToolbarSignal(true);
}

void FLWidget::closeIfWanted()
{
    if (!m_closeWanted || isBusy())
        return;
    m_closeWanted = false;
    // Queued, since a job that ends at once does so while the window is still rejecting its close event.
    QMetaObject::invokeMethod(this, &FLWidget::closeApp, Qt::QueuedConnection);
}
