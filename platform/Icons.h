// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QString>

namespace platform
{

// Windows' small icon (16 x 16 at 100 %) for folders. No disk access; any thread, call once per scan (it
// queries the shell). Null if the shell has none. A QImage, so that a worker thread can pass it on.
QImage systemFolderIcon();

// Windows' large icon (32 x 32 at 100 %) for files with the extension of that name. The file need not exist
// and is not accessed, so programs get the generic icon. Any thread; cache the result, since each call
// queries the shell. Null if the shell has none.
QImage systemFileIcon(const QString &fileName);

// The small icon (16 x 16 at 100 %) of this particular file, folder or drive, which is accessed: not for the
// interface thread. Null if the shell has none.
QImage smallIconOf(const QString &path);

} // namespace platform
