// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/Repair.h"
#include "Troubleshooter/engine/World.h"

namespace repair
{

// Checks whether the Microsoft Store and the services it needs are present, and offers Windows' own reset of
// its cache.
class StoreRepair : public Repair
{
public:
    StoreRepair(Store &store, Tools &tools) : m_store(store), m_tools(tools) {}

    Examination check(const core::CancelFlag &cancel) override;
    Outcome apply(const Step &step, const core::CancelFlag &cancel) override;

private:
    Store &m_store;
    Tools &m_tools;
};

} // namespace repair
