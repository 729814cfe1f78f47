// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/JobHost.h"

#include "widgets/FLWidget.h"
#include "widgets/ScanPage.h"

namespace
{

FLWidget *formAround(QWidget *widget)
{
    for (; widget; widget = widget->parentWidget())
        if (auto *form = qobject_cast<FLWidget *>(widget))
            return form;
    return nullptr;
}

} // namespace

JobHost::JobHost(QWidget *owner) : QObject(owner), m_owner(owner)
{
    connect(&m_relay, &core::ProgressRelay::changed, this, [this](const core::ScanProgress &progress) {
        if (!m_busy)
            return;
        if (m_options.progress)
            m_options.progress(progress);
        else if (m_options.page)
            m_options.page->showProgress(progress);
    });
}

JobHost::~JobHost()
{
    drop();
}

void JobHost::startWorker(JobOptions options, core::WorkerThread *worker, std::function<void()> ended)
{
    Q_ASSERT(!m_busy);
    m_worker.reset(worker);
    connect(worker, &core::WorkerThread::done, this, [this, ended = std::move(ended)] {
        m_relay.finish();
        const core::WorkerPointer<core::WorkerThread> kept = std::move(m_worker);
        endWith(ended);
    });
    m_relay.restart();
    markBegun(std::move(options));
    worker->start();
}

void JobHost::begin(JobOptions options, std::function<void()> stop)
{
    Q_ASSERT(!m_busy);
    m_stop = std::move(stop);
    markBegun(std::move(options));
}

void JobHost::end()
{
    if (m_busy)
        endWith({});
}

void JobHost::cancel()
{
    if (!m_busy)
        return;
    if (m_options.page)
        m_options.page->showStopping(m_options.stoppingTitle);
    if (m_worker)
        m_worker->requestStop();
    else if (const std::function<void()> stop = m_stop) // a copy: the job may end at once
        stop();
}

void JobHost::drop()
{
    m_worker.reset();
    if (m_busy)
        markEnded();
}

void JobHost::keepOpen()
{
    if (FLWidget *form = formAround(m_owner))
        form->m_closeWanted = false;
}

void JobHost::markBegun(JobOptions options)
{
    m_options = std::move(options);
    m_busy = true;
    if (m_options.page)
        m_options.page->begin(m_options.title, m_options.subject);
    m_form = formAround(m_owner);
    if (m_form)
        m_form->jobBegan(this, !m_ending);
}

void JobHost::markEnded()
{
    m_busy = false;
    m_stop = {};
    m_options = {};
    if (FLWidget *form = std::exchange(m_form, nullptr))
        form->jobEnded(this);
}

void JobHost::endWith(const std::function<void()> &ended)
{
    const QPointer<FLWidget> form(m_form);
    const QPointer<JobHost> self(this);
    if (m_options.page)
        m_options.page->complete();
    markEnded();
    if (ended && self) {
        m_ending = true;
        ended();
        if (self)
            m_ending = false;
    }
    if (form)
        form->closeIfWanted();
}
