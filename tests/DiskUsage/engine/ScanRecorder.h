// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"
#include "tests/support/MemoryEnumerator.h"

#include <QStringList>

namespace tests
{

// What a listener heard, and a cancel flag that it can set after a number of events.
class ScanRecorder : public diskusage::ScanListener
{
public:
    void totalSubFolders(int total) override { add(QStringLiteral("total %1").arg(total)); }
    void folderEntered(const QString &path) override { add(QStringLiteral("entered ") + path); }
    void itemSeen(int itemsSeen) override { add(QStringLiteral("item %1").arg(itemsSeen)); }

    QStringList events;
    core::CancelFlag cancel;
    int cancelAfter = -1;

private:
    void add(const QString &event)
    {
        events.append(event);
        if (events.size() == cancelAfter)
            cancel.set();
    }
};

inline diskusage::ScanResult scan(MemoryEnumerator &disk, const QString &root,
                                  const diskusage::ScanOptions &options, ScanRecorder &recorder)
{
    return diskusage::scanFolder(root, options, disk, recorder, recorder.cancel);
}

inline diskusage::ScanResult scan(MemoryEnumerator &disk, const QString &root,
                                  const diskusage::ScanOptions &options = {})
{
    ScanRecorder recorder;
    return scan(disk, root, options, recorder);
}

} // namespace tests
