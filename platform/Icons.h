// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

namespace platform
{

// The small icon (16 x 16 at 100 %) that this Windows gives to folders. No disk access; any thread, once per
// scan (it asks the shell). Null when the shell has none. An image, so that a worker thread can hand it over.
QImage systemFolderIcon();

} // namespace platform
