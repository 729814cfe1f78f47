// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/WorkerThread.h"

#include <QStringList>

#include <vector>

// Prepares the report: looks which groups' first pictures are still there.
class FindDuplicateImageMainResultThread : public core::WorkerThread
{
    Q_OBJECT

public:
    // The full path of the first picture of each group.
    explicit FindDuplicateImageMainResultThread(QStringList firstPictures);

    // After processFinish(); one a group. What a cancelled job did not look at counts as there.
    std::vector<bool> takeGone() { return std::move(m_gone); }

signals:
    void path(const QString &path); // on this thread, for every group
    void processFinish();

protected:
    void run() override;

private:
    QStringList m_firstPictures;
    std::vector<bool> m_gone;
};
