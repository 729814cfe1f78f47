// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

struct Hit {
    std::size_t page = 0; // index in the searched pages
    std::vector<int> row; // index of the section, then of the child, ...
    QStringList path;     // page title, section, ..., label
    QString value;
};

// The rows whose path and value together contain every word of `text`, ignoring case; at most `max` of them.
// Empty for a blank text.
std::vector<Hit> findRows(const std::vector<Page> &pages, const QString &text, std::size_t maxHits);

} // namespace systeminfo
