// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

struct Hit {
    std::size_t page = 0; // of those searched
    std::vector<int> row; // the section's index, then that of the child, ...
    QStringList path;     // page title, section, ..., label
    QString value;
};

// The rows whose path and value together hold every word of `text`, without regard to case; at most `most` of
// them. None for a blank text.
std::vector<Hit> findRows(const std::vector<Page> &pages, const QString &text, std::size_t most);

} // namespace systeminfo
