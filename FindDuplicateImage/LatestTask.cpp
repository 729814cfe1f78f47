// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/LatestTask.h"

#include <utility>

LatestTask::LatestTask(QObject *parent) : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

LatestTask::~LatestTask()
{
    cancel();
    m_pool.waitForDone();
}

void LatestTask::start(Task task, Effect failed)
{
    cancel();
    m_current = std::make_shared<core::CancelFlag>();
    m_pool.start([this, flag = m_current, task = std::move(task), failed = std::move(failed)]() mutable {
        Effect effect;
        try {
            effect = flag->isSet() ? Effect() : task(*flag);
        } catch (const std::exception &) {
            effect = std::move(failed);
        }
        const auto finish = [this, flag, effect = std::move(effect)] {
            if (m_current != flag)
                return;
            m_current.reset();
            if (effect)
                effect();
        };
        QMetaObject::invokeMethod(this, finish, Qt::QueuedConnection);
    });
}

void LatestTask::cancel()
{
    if (!m_current)
        return;
    m_current->set();
    m_current.reset();
    m_pool.clear();
}
