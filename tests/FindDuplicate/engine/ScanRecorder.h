// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/CandidateWalk.h"

#include <QStringList>

namespace tests
{

// What a scan tells, in order; cancels it at an item.
class ScanRecorder : public duplicates::ScanListener
{
public:
    QStringList events;
    core::CancelFlag *cancelAt = nullptr;
    int cancelItem = 0;

    void totalSubFolders(int total) override { events.append(QStringLiteral("total %1").arg(total)); }
    void folderEntered() override { events.append(QStringLiteral("step")); }
    void pathChanged(const QString &folder) override { events.append(folder); }
    void itemSeen(int itemsSeen) override
    {
        events.append(QString::number(itemsSeen));
        if (cancelAt && itemsSeen == cancelItem)
            cancelAt->set();
    }
};

} // namespace tests
