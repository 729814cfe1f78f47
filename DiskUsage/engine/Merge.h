// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <memory>

namespace diskusage
{

// The folder with this full path among those of the result; -1 when there is none.
int findFolder(const ScanResult &result, const QString &path);

// What a scan of everything would have found, but for the biggest files: `whole` with the folder `folder`
// (not its root) and all below it as `now` found them. The totals of the folders above are corrected, the
// categories hold the files of `now` in the place of the old ones. Both were made with the same table of file
// types. Null when cancelled.
std::shared_ptr<ScanResult> merged(const ScanResult &whole, int folder, const ScanResult &now,
                                   const core::CancelFlag &cancel);

} // namespace diskusage
