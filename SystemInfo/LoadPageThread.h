// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/MachineFactory.h"
#include "SystemInfo/engine/Pages.h"

#include "core/WorkerThread.h"

class QStandardItemModel;

// Gathers a page and fills the model, which must not be attached to a view meanwhile.
class LoadPageThread : public core::WorkerThread
{
    Q_OBJECT

public:
    LoadPageThread(systeminfo::PageId id, QStandardItemModel *model);

    // Valid after processFinish().
    const systeminfo::Page &page() const { return m_page; }

signals:
    void processFinish();

protected:
    void work() override;

private:
    const systeminfo::PageId m_id;
    QStandardItemModel *const m_model; // owned by the form
    const systeminfo::MachineFactory m_machines;
    systeminfo::Page m_page;
};
