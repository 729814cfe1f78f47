// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

namespace diskusage
{

// Which folders a scan leaves out: those whose path begins, ignoring case, with an excluded path. That takes
// in siblings of the same beginning ("C:\Data" leaves out "C:\Database" too); it is meant so.
class Exclusions
{
public:
    explicit Exclusions(const ScanOptions &options);

    bool isInOneDrive(const QString &path) const;
    bool isExcluded(const QString &path) const;
    // The same with a line in the debug log for each match in the list.
    bool isExcludedLogged(const QString &path) const;
    bool isEmpty() const { return m_paths.isEmpty() && !m_excludeOneDrive; }

private:
    QStringList m_paths;
    QString m_oneDrive;
    bool m_excludeOneDrive = false;
};

} // namespace diskusage
