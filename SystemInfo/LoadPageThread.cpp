// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/LoadPageThread.h"

#include "SystemInfo/Gathering.h"
#include "SystemInfo/PageModel.h"

using namespace systeminfo;

LoadPageThread::LoadPageThread(PageId id, QStandardItemModel *model)
    : WorkerThread(HighPriority),
      m_id(id),
      m_model(model),
      m_machines(machineFactory())
{
    connect(this, &WorkerThread::done, this, &LoadPageThread::processFinish);
}

void LoadPageThread::work()
{
    Gathering gathering(m_id, m_machines);
    m_page = gathering.wait(cancelFlag());
    if (!stopRequested())
        fillModel(*m_model, m_page);
}
