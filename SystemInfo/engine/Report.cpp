// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Report.h"

#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/ReportWriters.h"

#include <QRegularExpression>

namespace systeminfo
{

namespace
{

QString leftOut()
{
    return Words::tr("(left out)");
}

void replaceNames(QString &text, const QList<QRegularExpression> &names)
{
    for (const QRegularExpression &name : names)
        text.replace(name, leftOut());
}

void blankRow(Row &row, const QList<QRegularExpression> &names)
{
    if (row.privacy != Privacy::Open && !row.value.text.isEmpty())
        row.value = Value(leftOut());
    replaceNames(row.value.text, names);
    replaceNames(row.label, names);
    replaceNames(row.openPath, names);
    for (Row &child : row.children)
        blankRow(child, names);
}

QList<QRegularExpression> asWords(const QStringList &names)
{
    // The part of a SID that identifies the machine or domain, and credentials in a URL.
    QList<QRegularExpression> words = {
        QRegularExpression(QStringLiteral("S-1-5-21-\\d+-\\d+-\\d+(?:-\\d+)?")),
        QRegularExpression(QStringLiteral("(?<=://)[^/\\s@]+:[^/\\s@]+(?=@)"))};
    for (const QString &name : names) {
        // A one-letter name would match half of all drive letters.
        if (name.size() > 1)
            words << QRegularExpression(
                QStringLiteral("(?<![\\w])%1(?![\\w])").arg(QRegularExpression::escape(name)),
                QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    }
    return words;
}

} // namespace

QString notReported()
{
    return Words::tr("not reported by this machine");
}

bool isLeftOut(const QString &text)
{
    return text.contains(leftOut());
}

QString spokenValue(const Row &row)
{
    if (row.value.text.isEmpty() && row.problem.isEmpty())
        return row.children.empty() && row.label != row.openPath ? notReported() : QString();
    if (row.problem.isEmpty())
        return row.value.text;
    return row.value.text.isEmpty() ? row.problem : Words::tr("%1 (%2)").arg(row.value.text, row.problem);
}

Page blanked(const Page &page, const QStringList &names)
{
    Page result = page;
    const QList<QRegularExpression> words = asWords(names);
    for (Row &row : result.sections)
        blankRow(row, words);
    replaceNames(result.summary, words);
    return result;
}

QString plainText(const Row &row, int level)
{
    QString text(2 * level, QLatin1Char(' '));
    text += row.label;
    const QString value = spokenValue(row);
    if (!value.isEmpty())
        text += QLatin1Char('\t') + value;
    text += QLatin1Char('\n');
    for (const Row &child : row.children)
        text += plainText(child, level + 1);
    return text;
}

QString plainText(const Page &page)
{
    QString text = page.title + QLatin1Char('\n');
    if (!page.summary.isEmpty())
        text += page.summary + QLatin1Char('\n');
    for (const QString &notice : page.notices)
        text += notice + QLatin1Char('\n');
    for (const Row &row : page.sections)
        text += plainText(row, 1);
    return text;
}

QByteArray writeReport(const Report &report, ReportFormat format)
{
    switch (format) {
    case ReportFormat::Html:
        return htmlReport(report);
    case ReportFormat::Json:
        return jsonReport(report);
    case ReportFormat::Text:
        break;
    }
    QString text = Words::tr("System report of %1").arg(timeText(report.created)) + QLatin1Char('\n');
    for (const Page &page : report.pages)
        text += QLatin1Char('\n') + plainText(page);
    return text.toUtf8();
}

} // namespace systeminfo
