// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QList>
#include <QStringList>

// The programs that run in this session.
namespace platform
{

// File names ("setup.exe") of those that have a window with a title on the screen, each once, sorted.
QStringList programsWithWindows();

// A process of that file name that can be waited for; none when there is none, or Windows does not let us.
ObjectHandle openProgram(const QString &fileName);

struct RunningProgram {
    DWORD process = 0;
    quint64 started = 0;     // FILETIME
    DWORD priorityClass = 0; // HIGH_PRIORITY_CLASS and so on; 0 where Windows does not tell
};
// Those of this session that were started from this very file. The order is not defined.
QList<RunningProgram> runningFrom(const QString &path);

} // namespace platform
