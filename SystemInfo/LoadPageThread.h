// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/MachineFactory.h"
#include "SystemInfo/engine/Pages.h"

#include "core/WorkerThread.h"

class QStandardItemModel;

// The loader of a page: gathers it, fills the model, which no view has meanwhile, and tells.
class LoadPageThread : public core::WorkerThread
{
    Q_OBJECT

public:
    LoadPageThread(systeminfo::PageId id, QStandardItemModel *model);

    // After processFinish().
    const systeminfo::Page &page() const { return m_page; }

signals:
    void processFinish();

protected:
    void work() override;

private:
    const systeminfo::PageId m_id;
    QStandardItemModel *const m_model; // the form's
    const systeminfo::MachineFactory m_machines;
    systeminfo::Page m_page;
};
