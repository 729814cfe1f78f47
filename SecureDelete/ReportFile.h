// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/ReportModel.h"
#include "core/CancelFlag.h"

#include <QString>

namespace securedelete
{

struct ReportOptions {
    bool asCsv = false;
    bool withNames = true; // if false, files and folders are only numbered
    QString title;         // date and method
};

// Writes to a temporary file beside the target and replaces the target when complete. Does disk I/O; any
// thread. Returns an empty string on success, otherwise the reason.
QString writeReport(const QString &file, const Records &records, const ReportOptions &options,
                    const core::CancelFlag &cancel);

} // namespace securedelete
