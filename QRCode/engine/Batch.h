// SPDX-License-Identifier: GPL-3.0-or-later
// Parses a list of texts from a CSV file, one code each. Portable; the input is untrusted.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace qr
{

// Longer lists are refused: that many files were hardly intended.
inline constexpr qsizetype maxBatchRows = 10'000;
inline constexpr qsizetype maxBatchBytes = 32 * 1024 * 1024;

struct BatchRow {
    int line = 0; // line in the file where the row begins, from 1
    QString text;
    QString name; // output name without suffix; valid on Windows and unique

    bool operator==(const BatchRow &) const = default;
};

struct BatchList {
    QList<BatchRow> rows;
    bool tooLong = false; // then there are no rows
};

// The first column is the text, the second the name; a row without a name is named by its number ("007").
// Rows without a text are skipped, and so is a header row "text", "content", "link" or "url". The separator
// is the most frequent of comma, semicolon and tab in the first row. Encoding: UTF-8 or UTF-16 by BOM, UTF-8
// if valid, otherwise the system's code page. Quotes as in RFC 4180; line feeds inside quotes belong to the
// text.
BatchList parseBatch(const QByteArray &bytes);

// The cells of each row, as parseBatch() sees them.
struct CsvRow {
    int line = 0;
    QStringList cells;
};
QList<CsvRow> parseCsv(const QString &text, qsizetype maxRows);

} // namespace qr
