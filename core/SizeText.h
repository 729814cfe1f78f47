// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace core
{

// A size as all modules show it: GB, MB or KB with two decimals. The unit depends on integer division by 2^30
// and 2^20; bytes and TB are not used ("0.29 KB", "1024.00 MB", "3072.00 GB"). Always with a decimal point.
QString sizeText(quint64 bytes);

} // namespace core
