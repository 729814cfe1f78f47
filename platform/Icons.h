// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

namespace platform
{

// The small icon (16 x 16 at 100 %) that this Windows gives to folders. No disk access; any thread, once per
// scan (it asks the shell). Null when the shell has none. An image, so that a worker thread can hand it over.
QImage systemFolderIcon();

// The large icon (32 x 32 at 100 %) that this Windows gives to files with that name's extension. The file
// need not exist and is not looked at, so programs get the icon of programs. Any thread; keep what comes, for
// it asks the shell each time. Null when the shell has none.
QImage systemFileIcon(const QString &fileName);

// The small icon (16 x 16 at 100 %) of this very file, folder or drive, which is looked at: not for the
// interface thread. Null when the shell has none.
QImage smallIconOf(const QString &path);

} // namespace platform
