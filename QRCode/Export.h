// SPDX-License-Identifier: GPL-3.0-or-later
// Saves codes as files. Every image is read back before it counts as written. Any thread.
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
        TooLong,     // nothing was written, here and below
        TooSmall,    // a module would be smaller than a pixel
        Failed,
        Cancelled,
    };
    Outcome outcome = Outcome::Failed;
    QString file;    // the file that was written
    Verdict verdict; // on the image
    qsizetype tooLongBy = 0;
    QString error; // reason of a failure, for the user

    QString text() const; // the outcome, for the user
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
// One file per row, in row order. Existing files are never replaced: names get a number instead. Rows that
// were not reached before a cancel are Cancelled.
QList<Saved> saveAll(const QList<BatchRow> &rows, const BatchOptions &options, core::ProgressRelay &progress,
                     const core::CancelFlag &cancel);

} // namespace qr
