// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/ReportFile.h"

#include "SecureDelete/Texts.h"
#include "core/SizeText.h"
#include "platform/NewFile.h"
#include "widgets/CsvFile.h"

namespace securedelete
{

namespace
{

QString itemText(const ShredRecord &record, std::size_t number, bool withNames)
{
    if (withNames)
        return record.path;
    const QString kind = record.isLink
                             ? ReportModel::tr("Link %1")
                             : (record.isFolder ? ReportModel::tr("Folder %1") : ReportModel::tr("File %1"));
    return kind.arg(number);
}

// The temporary name of a file that could not be renamed back counts as a name too.
QString outcomeText(ShredRecord record, bool withNames)
{
    if (!withNames)
        record.leftName.clear();
    return Texts::outcome(record);
}

QString lineOf(const ShredRecord &record, std::size_t number, const ReportOptions &options)
{
    const QString result = record.destroyed ? ReportModel::tr("Destroyed") : ReportModel::tr("Left");
    const QString item = itemText(record, number, options.withNames);
    const QString outcome = outcomeText(record, options.withNames);
    if (options.asCsv)
        return csv::line({result, item, QString::number(record.size), outcome});
    return QStringLiteral("%1\t%2\t%3\t%4\r\n").arg(result, item, core::sizeText(record.size), outcome);
}

} // namespace

QString writeReport(const QString &file, const Records &records, const ReportOptions &options,
                    const core::CancelFlag &cancel)
{
    platform::NewFile target(file);
    QString head = options.title + QStringLiteral("\r\n\r\n");
    if (options.asCsv)
        head = csv::line({ReportModel::tr("Result"), ReportModel::tr("Item"),
                          ReportModel::tr("Size in Bytes"), ReportModel::tr("What Happened")});
    target.write("\xEF\xBB\xBF" + head.toUtf8());
    std::size_t number = 0;
    for (const ShredRecord &record : *records) {
        if (cancel.isSet())
            return ReportModel::tr("Cancelled.");
        target.write(lineOf(record, ++number, options).toUtf8());
    }
    QString problem;
    target.place(true, problem);
    return problem;
}

} // namespace securedelete
