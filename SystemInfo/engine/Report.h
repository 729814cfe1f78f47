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
    bool complete = false; // it includes private values
    std::vector<Page> pages;
};

// The text for an empty value where a blank would look like an omission.
QString notReported();
// A row's value with its problem, for reports and screen readers.
QString spokenValue(const Row &row);

// The page without private values, and without `names` (of the user and the computer) where they occur as
// whole words in other values such as paths.
Page blanked(const Page &page, const QStringList &names);

// True if the value was left out, completely or in part.
bool isLeftOut(const QString &text);

// A row with its children, a section or a page, as lines of "label<tab>value", indented by two blanks per
// level.
QString plainText(const Row &row, int level = 0);
QString plainText(const Page &page);

enum class ReportFormat { Text, Html, Json };
// UTF-8. HTML is self-contained; JSON is described at readReport().
QByteArray writeReport(const Report &report, ReportFormat format);

// {"format": "larkspur-system-report", "version": 1, "created": ISO 8601, "complete": bool, "pages": [
//   {"name", "title", "notices": [text], "rows": [
//     {"name", "label", "text": what is shown, or null if not reported, "value" and "unit" of a quantity,
//      "problem", "rows": [...]}]}]}
// Returns nullopt for anything else. The file is untrusted: its size and depth are limited.
std::optional<Report> readReport(const QByteArray &json);

inline constexpr qint64 maxReportBytes = 64 * 1024 * 1024;

} // namespace systeminfo
