// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QStringList>

// The programs that run in this session.
namespace platform
{

// File names ("setup.exe") of those that have a window with a title on the screen, each once, sorted.
QStringList programsWithWindows();

// A process of that file name that can be waited for; none when there is none, or Windows does not let us.
ObjectHandle openProgram(const QString &fileName);

} // namespace platform
