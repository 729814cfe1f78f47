// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform
{

// The recycle bins of the user who runs this program, on every fixed drive that has one:
// "C:\$RECYCLE.BIN\S-1-5-21-...". Never those of other users. Disk.
QStringList recycleBinFolders();

// "S-1-5-21-..." of that user; empty when Windows does not tell.
QString userSid();

// After something was taken out of a bin past the shell. Any thread.
void refreshRecycleBinIcon();

} // namespace platform
