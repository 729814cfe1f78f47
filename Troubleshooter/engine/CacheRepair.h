// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/Repair.h"
#include "Troubleshooter/engine/World.h"

namespace repair
{

// Lets Windows make the pictures of files anew: its cache of icons, or of thumbnails. Explorer holds the
// files open and is ended for it; whatever happens then, it is started again.
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

// Starts Explorer, where a repair has ended it and was itself ended before it could start it again. Not while
// a repair goes on. May wait for seconds.
void finishInterruptedRepair(Explorer &explorer);

} // namespace repair
