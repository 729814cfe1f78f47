// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/ReportModel.h"
#include "core/CancelFlag.h"

#include <QString>

namespace securedelete
{

struct ReportOptions {
    bool asCsv = false;
    bool withNames = true; // else files and folders are only numbered
    QString title;         // when, and by which method
};

// Writes the report to a temporary name beside the file and puts it in place when it is complete. Disk, any
// thread. Empty when it is written, else why not.
QString writeReport(const QString &file, const Records &records, const ReportOptions &options,
                    const core::CancelFlag &cancel);

} // namespace securedelete
