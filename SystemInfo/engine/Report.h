// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

#include <QByteArray>
#include <QDateTime>

#include <optional>

namespace systeminfo
{

struct Report {
    QDateTime created;
    bool complete = false; // private values are in it
    std::vector<Page> pages;
};

// What stands for an empty value where a reader cannot tell it from a forgotten one.
QString notReported();
// A row's value as a report and a screen reader say it: with what is wrong about it.
QString spokenValue(const Row &row);

// The page without private values, and without `names` (of the user and the computer) wherever they stand as
// a word of their own in another value, in a path for example.
Page blanked(const Page &page, const QStringList &names);

// True for a value that was blanked, or a part of it.
bool isLeftOut(const QString &text);

// A row with what is below it, a section or a page, as lines of "label<tab>value" indented by two blanks a
// level.
QString plainText(const Row &row, int level = 0);
QString plainText(const Page &page);

enum class ReportFormat { Text, Html, Json };
// UTF-8. HTML is one file without links to others; JSON is described at readReport().
QByteArray writeReport(const Report &report, ReportFormat format);

// {"format": "larkspur-system-report", "version": 1, "created": ISO 8601, "complete": bool, "pages": [
//   {"name", "title", "notices": [text], "rows": [
//     {"name", "label", "text": what is shown, or null when not reported, "value" and "unit" of a quantity,
//      "problem", "rows": [...]}]}]}
// None for anything else. The file may come from anybody: its size and depth are bounded.
std::optional<Report> readReport(const QByteArray &json);

inline constexpr qint64 maxReportBytes = 64 * 1024 * 1024;

} // namespace systeminfo
