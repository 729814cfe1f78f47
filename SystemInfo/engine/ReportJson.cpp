// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/ReportWriters.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace systeminfo
{

namespace
{

constexpr int maxDepth = 16;
const QString formatName = QStringLiteral("larkspur-system-report");

QString key(const char *name)
{
    return QString::fromLatin1(name);
}

QJsonArray rowsToJson(const std::vector<Row> &rows);

QJsonObject rowToJson(const Row &row)
{
    QJsonObject object{{key("name"), row.name}, {key("label"), row.label}};
    object[key("text")] = row.value.text.isEmpty() ? QJsonValue() : QJsonValue(row.value.text);
    if (row.value.number.isValid())
        object[key("value")] = QJsonValue::fromVariant(row.value.number);
    if (!row.value.unit.isEmpty())
        object[key("unit")] = row.value.unit;
    if (!row.problem.isEmpty())
        object[key("problem")] = row.problem;
    if (!row.children.empty())
        object[key("rows")] = rowsToJson(row.children);
    return object;
}

QJsonArray rowsToJson(const std::vector<Row> &rows)
{
    QJsonArray array;
    for (const Row &row : rows)
        array.append(rowToJson(row));
    return array;
}

QStringList toTexts(const QJsonArray &array)
{
    QStringList texts;
    for (const QJsonValue &value : array)
        texts << value.toString();
    return texts;
}

std::vector<Row> rowsFromJson(const QJsonArray &array, int depth)
{
    std::vector<Row> rows;
    if (depth > maxDepth)
        return rows;
    for (const QJsonValue &value : array) {
        const QJsonObject object = value.toObject();
        Row row;
        row.name = object[key("name")].toString();
        row.label = object[key("label")].toString();
        row.value.text = object[key("text")].toString();
        const QJsonValue number = object[key("value")];
        if (number.isBool() || number.isDouble())
            row.value.number = number.toVariant();
        row.value.unit = object[key("unit")].toString();
        row.problem = object[key("problem")].toString();
        row.children = rowsFromJson(object[key("rows")].toArray(), depth + 1);
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace

QByteArray jsonReport(const Report &report)
{
    QJsonArray pages;
    for (const Page &page : report.pages) {
        QJsonObject object{
            {key("name"), page.name}, {key("title"), page.title}, {key("rows"), rowsToJson(page.sections)}};
        if (!page.notices.isEmpty())
            object[key("notices")] = QJsonArray::fromStringList(page.notices);
        if (!page.summary.isEmpty())
            object[key("summary")] = page.summary;
        pages.append(object);
    }
    return QJsonDocument(QJsonObject{{key("format"), formatName},
                                     {key("version"), 1},
                                     {key("created"), report.created.toString(Qt::ISODate)},
                                     {key("complete"), report.complete},
                                     {key("pages"), pages}})
        .toJson();
}

std::optional<Report> readReport(const QByteArray &json)
{
    if (json.size() > maxReportBytes)
        return {};
    const QJsonObject root = QJsonDocument::fromJson(json).object();
    if (root[key("format")].toString() != formatName || root[key("version")].toInt() != 1)
        return {};
    Report report;
    report.created = QDateTime::fromString(root[key("created")].toString(), Qt::ISODate);
    report.complete = root[key("complete")].toBool();
    for (const QJsonValue &value : root[key("pages")].toArray()) {
        const QJsonObject object = value.toObject();
        report.pages.push_back({.name = object[key("name")].toString(),
                                .title = object[key("title")].toString(),
                                .sections = rowsFromJson(object[key("rows")].toArray(), 0),
                                .notices = toTexts(object[key("notices")].toArray()),
                                .summary = object[key("summary")].toString()});
    }
    return report;
}

} // namespace systeminfo
