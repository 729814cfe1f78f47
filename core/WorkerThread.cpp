// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/WorkerThread.h"

#include <utility>

namespace core
{

void WorkerThread::deliver(std::function<void()> emission)
{
    // Posted to this object and not to a receiver: deleting the worker takes the event away with it, which a
    // queued connection to a form does not do.
    QMetaObject::invokeMethod(this, std::move(emission), Qt::QueuedConnection);
}

void EndWorker::operator()(WorkerThread *worker) const
{
    worker->disconnect();
    worker->requestStop();
    worker->wait();
    delete worker;
}

} // namespace core
