// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QString>

// Whether another process of this Windows session runs the program already. The first one keeps the mark for
// as long as the object lives.
class SingleInstance
{
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    // Brings the window of the process that came first to the front; when that one is just starting, waits up
    // to two seconds for its window. False when this is the first one, or the other has no window to show;
    // then this process opens one of its own.
    bool activateFirst(const QString &windowTitle) const;

private:
    platform::ObjectHandle m_mark;
    bool m_isFirst;
};
