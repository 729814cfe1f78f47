// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QString>

// Whether the program is already running in this Windows session. The first instance holds a mutex as long as
// the object lives.
class SingleInstance
{
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    // Brings the first instance's window to the front; if that instance is just starting, waits up to two
    // seconds for its window. False if this is the first instance, or the other one has no window; then this
    // process opens its own.
    bool activateFirst(const QString &windowTitle) const;

private:
    platform::ObjectHandle m_mark;
    bool m_isFirst;
};
