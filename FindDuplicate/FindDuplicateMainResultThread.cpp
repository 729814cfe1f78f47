// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateMainResultThread.h"

#include "platform/Paths.h"

namespace
{
constexpr int checkedAtOnce = 500;
}

FindDuplicateMainResultThread::FindDuplicateMainResultThread(
    const std::vector<duplicates::DuplicateGroup> &groups)
    : m_groups(groups)
{
}

void FindDuplicateMainResultThread::run()
{
    m_listed = duplicates::listedGroups(m_groups, {}, duplicates::GroupOrder::Report);
    deliver([this] { emit processFinish(); });
    // The list does not wait for this: it may take seconds, and on a lost network drive minutes.
    checkFirstFiles();
}

void FindDuplicateMainResultThread::checkFirstFiles()
{
    int first = 0;
    QList<bool> exist;
    const auto passOn = [&] {
        deliver([this, first, exist] { emit firstFilesChecked(first, exist); });
        first += static_cast<int>(exist.size());
        exist.clear();
    };
    for (const duplicates::DuplicateGroup &group : m_groups) {
        if (stopRequested())
            return;
        exist.append(platform::fileExists(group.members.front().fullPath()));
        if (exist.size() == checkedAtOnce)
            passOn();
    }
    passOn();
}
