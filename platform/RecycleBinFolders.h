// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform
{

// The recycle bins of the current user on all fixed drives that have one: "C:\$RECYCLE.BIN\S-1-5-21-...".
// Never those of other users. Does disk I/O.
QStringList recycleBinFolders();

// The user's SID, "S-1-5-21-..."; empty if not available.
QString userSid();

// Call after removing something from a bin without the shell. Any thread.
void refreshRecycleBinIcon();

} // namespace platform
