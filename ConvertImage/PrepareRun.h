// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Naming.h"
#include "ConvertImage/options/Settings.h"
#include "core/CancelFlag.h"

namespace imaging
{
class DecoderPool;
}

// What has to be known before a conversion begins.
struct PreparedRun {
    std::vector<conversion::PlannedFile> files;
    std::vector<conversion::PlannedFile> resolved; // the same, each with an output of its own
    bool folderMissing = false;                    // the output folder
    bool documentExists = false;                   // the PDF
    bool markIsUnreadable = false;                 // the picture of the watermark
};

// Disk. `subfolders` as those of conversion::plannedFiles().
PreparedRun prepareRun(const QStringList &sources, const QHash<QString, QString> &subfolders,
                       const conversion::Settings &settings, imaging::DecoderPool &decoders,
                       const core::CancelFlag &cancel);
