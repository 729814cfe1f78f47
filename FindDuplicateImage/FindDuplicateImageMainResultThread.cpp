// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageMainResultThread.h"

#include "platform/Paths.h"

FindDuplicateImageMainResultThread::FindDuplicateImageMainResultThread(QStringList firstPictures)
    : m_firstPictures(std::move(firstPictures)),
      m_gone(static_cast<std::size_t>(m_firstPictures.size()))
{
}

void FindDuplicateImageMainResultThread::run()
{
    for (qsizetype i = 0; i < m_firstPictures.size() && !stopRequested(); ++i) {
        emit path(m_firstPictures.at(i));
        m_gone[static_cast<std::size_t>(i)] = !platform::fileExists(m_firstPictures.at(i));
    }
    deliver([this] { emit processFinish(); });
}
