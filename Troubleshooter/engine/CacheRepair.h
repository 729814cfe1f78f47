// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/Repair.h"
#include "Troubleshooter/engine/World.h"

namespace repair
{

// Makes Windows rebuild its icon or thumbnail cache. Explorer keeps the files open and is ended for that; it
// is restarted in any case.
class CacheRepair : public Repair
{
public:
    CacheRepair(CacheKind kind, Caches &caches, Explorer &explorer)
        : m_kind(kind),
          m_caches(caches),
          m_explorer(explorer)
    {
    }

    Examination check(const core::CancelFlag &cancel) override;
    Outcome apply(const Step &step, const core::CancelFlag &cancel) override;

private:
    QString name() const;

    CacheKind m_kind;
    Caches &m_caches;
    Explorer &m_explorer;
};

// Starts Explorer if a repair had ended it and was killed before restarting it. Not to be called during a
// repair. May take seconds.
void finishInterruptedRepair(Explorer &explorer);

} // namespace repair
