// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Naming.h"
#include "ConvertImage/options/Settings.h"
#include "core/CancelFlag.h"

namespace imaging
{
class DecoderPool;
}

// What must be known before a conversion starts.
struct PreparedRun {
    std::vector<conversion::PlannedFile> files;
    std::vector<conversion::PlannedFile> resolved; // the same files, with name clashes resolved
    bool folderMissing = false;                    // the output folder does not exist
    bool documentExists = false;                   // the PDF exists already
    bool markIsUnreadable = false;                 // the watermark image cannot be read
};

// Does disk I/O. `subfolders` as for conversion::plannedFiles().
PreparedRun prepareRun(const QStringList &sources, const QHash<QString, QString> &subfolders,
                       const conversion::Settings &settings, imaging::DecoderPool &decoders,
                       const core::CancelFlag &cancel);
