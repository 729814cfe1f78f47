// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <memory>

namespace diskusage
{

// The folder with this full path in the result; -1 if there is none.
int findFolder(const ScanResult &result, const QString &path);

// What a complete scan would have found, except for the biggest files: `whole` with the folder `folder` (not
// its root) and all its descendants replaced by `now`. Totals of the ancestors are corrected, and the
// categories contain the files of `now` instead of the old ones. Both must use the same table of file types.
// Null when cancelled.
std::shared_ptr<ScanResult> merged(const ScanResult &whole, int folder, const ScanResult &now,
                                   const core::CancelFlag &cancel);

} // namespace diskusage
