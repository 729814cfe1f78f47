// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Report.h"

namespace systeminfo
{

// One fact of two reports.
struct Difference {
    // NotCompared: left out of one of the reports.
    enum class Kind { Same, Changed, OnlyFirst, OnlySecond, NotCompared };

    QStringList path; // page, section, ..., label
    QString first;
    QString second;
    Kind kind = Kind::Same;

    bool operator==(const Difference &) const = default;
};

// Every fact of both, in the order of the first report, with those that only the second one has behind their
// neighbours. Rows belong together that have the same name and label, the n-th of such rows to the n-th.
std::vector<Difference> compareReports(const Report &first, const Report &second);

} // namespace systeminfo
