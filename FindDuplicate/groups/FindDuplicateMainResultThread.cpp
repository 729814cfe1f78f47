// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/FindDuplicateMainResultThread.h"

#include "platform/FileProbe.h"

#include <utility>

namespace
{
constexpr int checkedAtOnce = 500;
}

FindDuplicateMainResultThread::FindDuplicateMainResultThread(
    std::shared_ptr<const duplicates::FileGroups> groups)
    : m_groups(std::move(groups))
{
}

void FindDuplicateMainResultThread::work()
{
    const int count = m_groups->count();
    m_firstFiles.reserve(static_cast<std::size_t>(count));
    for (int group = 0; group < count; ++group)
        m_firstFiles.push_back(std::as_const(*m_groups).file(group, 0).fullPath());
    m_groups.reset();
    deliver([this] { emit processFinish(); });
    // After the list is shown, since this may take seconds, or minutes on a lost network drive.
    checkFirstFiles();
}

void FindDuplicateMainResultThread::abandon()
{
    m_firstFiles.clear();
    if (std::exchange(m_groups, nullptr))
        deliver([this] { emit processFinish(); }); // with the groups listed so far
}

void FindDuplicateMainResultThread::checkFirstFiles()
{
    const platform::InterruptibleCalls::Call call(m_calls);
    int first = 0;
    QList<bool> exist;
    const auto passOn = [&] {
        deliver([this, first, exist] { emit firstFilesChecked(first, exist); });
        first += static_cast<int>(exist.size());
        exist.clear();
    };
    for (const QString &path : m_firstFiles) {
        if (stopRequested())
            return;
        exist.append(platform::fileProbe().listedAttributes(path).has_value());
        if (exist.size() == checkedAtOnce)
            passOn();
    }
    passOn();
}
