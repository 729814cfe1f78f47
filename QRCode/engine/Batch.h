// SPDX-License-Identifier: GPL-3.0-or-later
// A list of texts from a CSV file, one code each. Portable, untrusted bytes.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace qr
{

// A list beyond these is refused: it was hardly meant to become so many files.
inline constexpr qsizetype maxBatchRows = 10'000;
inline constexpr qsizetype maxBatchBytes = 32 * 1024 * 1024;

struct BatchRow {
    int line = 0; // of the file, from 1, where the row begins
    QString text;
    QString name; // of the file to make, without suffix: fit for Windows, and no two rows have the same

    bool operator==(const BatchRow &) const = default;
};

struct BatchList {
    QList<BatchRow> rows;
    bool tooLong = false; // rows is empty then
};

// Texts stand in the first column, names in the second; a row without a name gets its number ("007"). Rows
// without a text are left out, and so is a first row that says "text", "content", "link" or "url". The
// separator is whichever of comma, semicolon and tab the first row has most of. UTF-8 and UTF-16 by their
// marks, UTF-8 when it is valid, the system's own encoding otherwise. Quotes as in RFC 4180; line feeds
// inside of them belong to the text.
BatchList parseBatch(const QByteArray &bytes);

// The cells of each row, as parseBatch() sees them.
struct CsvRow {
    int line = 0;
    QStringList cells;
};
QList<CsvRow> parseCsv(const QString &text, qsizetype maxRows);

} // namespace qr
