// SPDX-License-Identifier: GPL-3.0-or-later
// Codes as files. Every picture is read back before it counts. Any thread.
#pragma once

#include "QRCode/engine/Batch.h"
#include "QRCode/engine/Check.h"

#include "core/CancelFlag.h"
#include "core/ScanProgress.h"

namespace qr
{

enum class Format { Png, Svg, Pdf };
QString suffix(Format format); // "png"

struct Saved {
    enum class Outcome {
        Written,
        DoesNotScan, // nothing was written
        TooLong,     // so was nothing here, nor below
        TooSmall,    // a module would be smaller than a pixel
        Failed,
        Cancelled,
    };
    Outcome outcome = Outcome::Failed;
    QString file;    // that was written
    Verdict verdict; // of the picture
    qsizetype tooLongBy = 0;
    QString error; // why it failed, in words for the user

    QString text() const; // what became of it, in words for the user
};

struct SaveOrder {
    QString text;
    Style style;
    Format format = Format::Png;
    QString file;
    bool evenIfUnreadable = false; // otherwise a code that does not scan is not written
};
// Replaces the file in one step.
Saved save(const SaveOrder &order);

struct BatchOptions {
    QString folder;
    Format format = Format::Png;
    Style style;
};
// One file a row, in their order; nothing that exists is replaced: names get a number then. What was not
// reached when the job was cancelled is Cancelled.
QList<Saved> saveAll(const QList<BatchRow> &rows, const BatchOptions &options, core::ProgressRelay &progress,
                     const core::CancelFlag &cancel);

} // namespace qr
