// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

namespace diskusage
{

// Decides which folders a scan skips: those whose path starts with an excluded path, ignoring case. This
// includes siblings with the same prefix ("C:\Data" excludes "C:\Database" too), by design.
class Exclusions
{
public:
    explicit Exclusions(const ScanOptions &options);

    bool isInOneDrive(const QString &path) const;
    bool isExcluded(const QString &path) const;
    // The same with a debug message for each matching entry.
    bool isExcludedLogged(const QString &path) const;
    bool isEmpty() const { return m_paths.isEmpty() && !m_excludeOneDrive; }

private:
    QStringList m_paths;
    QString m_oneDrive;
    bool m_excludeOneDrive = false;
};

} // namespace diskusage
