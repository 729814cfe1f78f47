// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateMainResultThread.h"

#include "platform/FileProbe.h"

#include <numeric>
#include <utility>

namespace
{
constexpr int checkedAtOnce = 500;
}

FindDuplicateMainResultThread::FindDuplicateMainResultThread(
    std::shared_ptr<const std::vector<duplicates::DuplicateGroup>> groups)
    : m_groups(std::move(groups))
{
}

void FindDuplicateMainResultThread::work()
{
    prepare();
    m_groups.reset();
    deliver([this] { emit processFinish(); });
    // The list does not wait for this: it may take seconds, and on a lost network drive minutes.
    checkFirstFiles();
}

void FindDuplicateMainResultThread::abandon()
{
    m_firstFiles.clear();
    if (std::exchange(m_groups, nullptr))
        deliver([this] { emit processFinish(); }); // of what could be listed
}

void FindDuplicateMainResultThread::prepare()
{
    m_listed.resize(m_groups->size());
    std::iota(m_listed.begin(), m_listed.end(), 0); // in the order of the report
    m_firstFiles.reserve(m_groups->size());
    for (const duplicates::DuplicateGroup &group : *m_groups)
        m_firstFiles.push_back(group.members.front().fullPath());
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
    for (const QString &path : m_firstFiles) {
        if (stopRequested())
            return;
        exist.append(platform::fileProbe().listedAttributes(path).has_value());
        if (exist.size() == checkedAtOnce)
            passOn();
    }
    passOn();
}
