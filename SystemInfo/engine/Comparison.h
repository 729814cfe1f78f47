// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Report.h"

namespace systeminfo
{

// One fact and its values in two reports.
struct Difference {
    // NotCompared: left out of one of the reports.
    enum class Kind { Same, Changed, OnlyFirst, OnlySecond, NotCompared };

    QStringList path; // page, section, ..., label
    QString first;
    QString second;
    Kind kind = Kind::Same;

    bool operator==(const Difference &) const = default;
};

// All facts of both reports in the order of the first; facts that only the second has follow their neighbours
// there. Rows match by name and label, the n-th of equal ones with the n-th.
std::vector<Difference> compareReports(const Report &first, const Report &second);

} // namespace systeminfo
