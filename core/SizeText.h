// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace core
{

// A size as every module shows it: GB, MB or KB with two decimals, the unit chosen by integer division by
// 2^30 and 2^20; there are no bytes and no TB ("0.29 KB", "1024.00 MB", "3072.00 GB"). Always a decimal
// point.
QString sizeText(quint64 bytes);

} // namespace core
