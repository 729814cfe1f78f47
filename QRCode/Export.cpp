// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/Export.h"

#include "platform/NewFile.h"
#include "platform/Paths.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

namespace qr
{

namespace
{

using Placed = platform::NewFile::Placed;

QString tr(const char *text)
{
    return QCoreApplication::translate("QRCodeExport", text);
}

Saved tooSmall(const Drawing &drawing)
{
    Saved saved{.outcome = Saved::Outcome::TooSmall};
    saved.error =
        tr("The picture is too small for this code: it needs %1 pixels at least.").arg(drawing.side());
    return saved;
}

Saved failed(const QString &error)
{
    return {.outcome = Saved::Outcome::Failed, .error = error};
}

// The encoded file and its outcome: Written if it may be written and scans.
struct Encoded {
    QByteArray bytes;
    Saved saved;
};

// An image is checked as decoded from its file; for vector formats the drawing itself is checked.
Verdict judge(const Drawing &drawing, const QByteArray &bytes, const QString &text, Format format)
{
    constexpr int pixelsPerModule = 8; // a medium size on paper or screen
    return check(drawing,
                 format == Format::Png ? QImage::fromData(bytes, "png")
                                       : drawing.image(drawing.side() * pixelsPerModule),
                 text);
}

QByteArray png(const QImage &picture)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return picture.save(&buffer, "png") ? buffer.data() : QByteArray();
}

Encoded encoded(const QString &text, const Style &style, Format format)
{
    const core::QrCode code = core::encodeQr(text, style.correction);
    if (!code.matrix)
        return {{}, {.outcome = Saved::Outcome::TooLong, .tooLongBy = code.tooLongBy}};
    const Drawing drawing(*code.matrix, style);
    if (format == Format::Png && drawing.pixelsPerModule(style.imageSize) < 1)
        return {{}, tooSmall(drawing)};
    const QByteArray bytes = format == Format::Svg   ? drawing.svg()
                             : format == Format::Pdf ? drawing.pdf()
                                                     : png(drawing.image());
    if (bytes.isEmpty())
        return {{}, failed(tr("There is not enough memory."))};
    const Verdict verdict = judge(drawing, bytes, text, format);
    return {bytes,
            {.outcome = verdict.scans ? Saved::Outcome::Written : Saved::Outcome::DoesNotScan,
             .verdict = verdict}};
}

// Reads the file back before it is placed, so that a bad write costs no older file.
Placed write(const QString &path, const QByteArray &bytes, bool replace, QString &problem)
{
    platform::NewFile file(path);
    if (file.write(bytes) && file.file().seek(0) && file.file().readAll() != bytes) {
        problem = tr("The file does not hold what was written.");
        return Placed::Failed;
    }
    return file.place(replace, problem);
}

// Takes the first free name.
Saved writeNew(const QByteArray &bytes, const QString &folder, const QString &name, const QString &ending)
{
    constexpr int maxCopies = 10'000;
    for (int copy = 1; copy <= maxCopies; ++copy) {
        const QString free = copy == 1 ? name : u"%1 (%2)"_s.arg(name, QString::number(copy));
        const QString path = QDir(folder).filePath(free + u'.' + ending);
        QString problem;
        const Placed placed =
            platform::fileExists(path) ? Placed::NameTaken : write(path, bytes, false, problem);
        if (placed == Placed::Done)
            return {.outcome = Saved::Outcome::Written, .file = path};
        if (placed == Placed::Failed)
            return failed(problem);
    }
    return failed(tr("All names for it are taken."));
}

Saved saveRow(const BatchRow &row, const BatchOptions &options)
{
    const Encoded made = encoded(row.text, options.style, options.format);
    if (made.saved.outcome != Saved::Outcome::Written)
        return made.saved;
    Saved saved = writeNew(made.bytes, options.folder, row.name, suffix(options.format));
    saved.verdict = made.saved.verdict;
    return saved;
}

} // namespace

QString suffix(Format format)
{
    switch (format) {
    case Format::Png:
        return u"png"_s;
    case Format::Svg:
        return u"svg"_s;
    case Format::Pdf:
        break;
    }
    return u"pdf"_s;
}

QString Saved::text() const
{
    switch (outcome) {
    case Outcome::Written:
        return verdict.scans ? tr("Saved and read back") : tr("Saved, but it does not scan");
    case Outcome::DoesNotScan:
        return tr("Does not scan: %1")
            .arg(verdict.reasons.isEmpty() ? QString() : reasonText(verdict.reasons.first()));
    case Outcome::TooLong:
        return tr("Too long by %1 characters").arg(tooLongBy);
    case Outcome::Cancelled:
        return tr("Cancelled");
    case Outcome::TooSmall:
    case Outcome::Failed:
        break;
    }
    return error;
}

Saved save(const SaveOrder &order)
{
    const Encoded made = encoded(order.text, order.style, order.format);
    if (made.bytes.isEmpty() || (!made.saved.verdict.scans && !order.evenIfUnreadable))
        return made.saved;
    QString problem;
    if (write(order.file, made.bytes, true, problem) != Placed::Done)
        return failed(problem);
    return {.outcome = Saved::Outcome::Written, .file = order.file, .verdict = made.saved.verdict};
}

QList<Saved> saveAll(const QList<BatchRow> &rows, const BatchOptions &options, core::ProgressRelay &progress,
                     const core::CancelFlag &cancel)
{
    progress.setTotalSteps(static_cast<int>(rows.size()));
    QList<Saved> all;
    all.reserve(rows.size());
    for (const BatchRow &row : rows) {
        if (cancel.isSet()) {
            all.append({.outcome = Saved::Outcome::Cancelled});
            continue;
        }
        progress.setPath(row.name);
        all.append(saveRow(row, options));
        progress.addStep();
    }
    return all;
}

} // namespace qr
