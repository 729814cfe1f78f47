// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/ReportWriters.h"

namespace systeminfo
{

namespace
{

// For light and dark screens and for print: page breaks keep a section with its heading.
constexpr const char *style = R"(
:root { color-scheme: light dark; }
body { font: 14px/1.45 "Segoe UI", system-ui, sans-serif; margin: 2em auto; max-width: 60em; padding: 0 1em; }
h1 { font-size: 1.6em; } h2 { font-size: 1.25em; margin: 1.6em 0 .4em; border-bottom: 1px solid #8886; }
table { border-collapse: collapse; width: 100%; }
th, td { padding: .15em .5em; vertical-align: top; text-align: left; border-bottom: 1px solid #8883; overflow-wrap: anywhere; }
th { width: 40%; font-weight: normal; } tr.group > * { font-weight: 600; padding-top: .6em; }
.none { color: #767676; } .problem { color: #c22; }
@media print { body { margin: 0; max-width: none; font-size: 10pt; } h2 { break-after: avoid; } tr { break-inside: avoid; } }
)";

void addRow(QString &html, const Row &row, int level)
{
    const QString kind = row.children.empty() ? QString() : QStringLiteral(" class=\"group\"");
    const bool isMissing = row.value.text.isEmpty() && row.problem.isEmpty();
    QString value = (isMissing ? spokenValue(row) : row.value.text).toHtmlEscaped();
    if (isMissing && !value.isEmpty())
        value = QStringLiteral("<span class=\"none\">%1</span>").arg(value);
    if (!row.problem.isEmpty())
        value += QStringLiteral(" <span class=\"problem\">(%1)</span>").arg(row.problem.toHtmlEscaped());
    html += QStringLiteral("<tr%1><th scope=\"row\" style=\"padding-left:%2em\">")
                .arg(kind)
                .arg(0.5 + 1.2 * level);
    html += row.label.toHtmlEscaped() + QStringLiteral("</th><td>") + value + QStringLiteral("</td></tr>\n");
    for (const Row &child : row.children)
        addRow(html, child, level + 1);
}

} // namespace

QByteArray htmlReport(const Report &report)
{
    const QString title = Words::tr("System report");
    QString html =
        QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>") +
        title.toHtmlEscaped() + QStringLiteral("</title>\n<style>") + QLatin1String(style) +
        QStringLiteral("</style></head>\n<body>\n<h1>") + title.toHtmlEscaped() +
        QStringLiteral("</h1>\n<p>") + timeText(report.created) + QStringLiteral("</p>\n");
    for (const Page &page : report.pages) {
        html += QStringLiteral("<h2>") + page.title.toHtmlEscaped() + QStringLiteral("</h2>\n");
        QStringList lines = page.notices;
        if (!page.summary.isEmpty())
            lines.prepend(page.summary);
        for (const QString &line : lines)
            html += QStringLiteral("<p>") + line.toHtmlEscaped() + QStringLiteral("</p>\n");
        html += QStringLiteral("<table>\n");
        for (const Row &row : page.sections)
            addRow(html, row, 0);
        html += QStringLiteral("</table>\n");
    }
    html += QStringLiteral("</body></html>\n");
    return html.toUtf8();
}

} // namespace systeminfo
