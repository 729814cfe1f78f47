// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QList>
#include <QStringList>

// The programs that run in this session.
namespace platform
{

// File names ("setup.exe") of processes with a visible titled window; unique and sorted.
QStringList programsWithWindows();

// A waitable handle of a process with that file name; null if there is none, or it cannot be opened.
ObjectHandle openProgram(const QString &fileName);

struct RunningProgram {
    DWORD process = 0;
    quint64 started = 0;     // FILETIME
    DWORD priorityClass = 0; // HIGH_PRIORITY_CLASS and so on; 0 if unknown
};
// Processes of this session started from exactly this file, in no particular order.
QList<RunningProgram> runningFrom(const QString &path);

} // namespace platform
