// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Batch.h"

#include <QHash>
#include <QStringConverter>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace qr
{

namespace
{

constexpr qsizetype maxNameLength = 80;

QString decoded(const QByteArray &bytes)
{
    if (const auto encoding = QStringConverter::encodingForData(bytes))
        return QStringDecoder(*encoding)(bytes);
    QStringDecoder utf8(QStringConverter::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QStringDecoder(QStringConverter::System)(bytes) : text;
}

// Detected in the first row, ignoring separators in quotes.
QChar separatorOf(const QString &text)
{
    constexpr std::array<char16_t, 3> candidates{u',', u';', u'\t'};
    std::array<int, 3> counts{};
    bool quoted = false;
    for (const QChar c : text) {
        if (c == u'"')
            quoted = !quoted;
        if (!quoted && (c == u'\n' || c == u'\r'))
            break;
        for (std::size_t i = 0; i < candidates.size() && !quoted; ++i)
            counts[i] += c == candidates[i];
    }
    return candidates[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

class CsvReader
{
public:
    CsvReader(const QString &text, qsizetype maxRows)
        : m_text(text),
          m_separator(separatorOf(text)),
          m_maxRows(maxRows)
    {
    }

    QList<CsvRow> read()
    {
        while (m_at < m_text.size() && m_rows.size() < m_maxRows)
            step(m_text[m_at++]);
        if (m_rows.size() < m_maxRows && (!m_cell.isEmpty() || !m_row.cells.isEmpty()))
            endRow();
        return m_rows;
    }

private:
    void step(QChar c)
    {
        const bool beforeLineFeed = m_at < m_text.size() && m_text[m_at] == u'\n';
        if (c == u'\n' || (c == u'\r' && !beforeLineFeed))
            ++m_line;
        if (m_quoted) {
            quotedStep(c);
        } else if (c == u'"' && m_cell.isEmpty()) {
            m_quoted = true;
        } else if (c == m_separator) {
            endCell();
        } else if (c == u'\n' || c == u'\r') {
            if (c == u'\r' && beforeLineFeed) {
                ++m_at;
                ++m_line;
            }
            endRow();
        } else {
            m_cell += c;
        }
    }

    void quotedStep(QChar c)
    {
        if (c != u'"') {
            m_cell += c;
        } else if (m_at < m_text.size() && m_text[m_at] == u'"') {
            m_cell += c;
            ++m_at;
        } else {
            m_quoted = false;
        }
    }

    void endCell() { m_row.cells.append(std::exchange(m_cell, {})); }

    void endRow()
    {
        endCell();
        m_rows.append(std::exchange(m_row, {}));
        m_row.line = m_line;
    }

    const QString &m_text;
    QChar m_separator;
    qsizetype m_maxRows;
    qsizetype m_at = 0;
    int m_line = 1;
    bool m_quoted = false;
    QString m_cell;
    CsvRow m_row{1, {}};
    QList<CsvRow> m_rows;
};

bool isHeader(const CsvRow &row)
{
    static const QStringList words{u"text"_s, u"content"_s, u"link"_s, u"url"_s};
    return words.contains(row.cells.first().trimmed(), Qt::CaseInsensitive);
}

// A valid Windows file name: no path, no device.
QString fileName(const QString &wanted)
{
    static const QStringList devices{u"CON"_s, u"PRN"_s, u"AUX"_s, u"NUL"_s, u"CONIN$"_s, u"CONOUT$"_s};
    QString name = wanted.trimmed().left(maxNameLength);
    for (QChar &c : name) {
        if (c.unicode() < 0x20 || QStringView(u"<>:\"/\\|?*").contains(c))
            c = u'_';
    }
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    while (name.endsWith(u'.') || name.endsWith(u' '))
        name.chop(1);
    const QString stem = name.section(u'.', 0, 0).trimmed();
    const bool isPort =
        stem.size() == 4 && stem[3].isDigit() &&
        (stem.startsWith("COM"_L1, Qt::CaseInsensitive) || stem.startsWith("LPT"_L1, Qt::CaseInsensitive));
    return isPort || devices.contains(stem, Qt::CaseInsensitive) ? '_'_L1 + name : name;
}

void giveNames(QList<BatchRow> &rows)
{
    const int digits = std::max(3, static_cast<int>(QString::number(rows.size()).size()));
    QHash<QString, int> taken; // with the number for the next duplicate
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const QString number = QString::number(i + 1).rightJustified(digits, u'0');
        const QString wanted = fileName(rows[i].name);
        const QString base = wanted.isEmpty() ? number : wanted;
        QString name = base;
        while (taken.contains(name.toCaseFolded()))
            name = u"%1 (%2)"_s.arg(base, QString::number(taken[base.toCaseFolded()]++));
        taken.insert(name.toCaseFolded(), 2);
        rows[i].name = name;
    }
}

} // namespace

QList<CsvRow> parseCsv(const QString &text, qsizetype maxRows)
{
    return CsvReader(text, maxRows).read();
}

BatchList parseBatch(const QByteArray &bytes)
{
    if (bytes.size() > maxBatchBytes)
        return {{}, true};
    // One more row for the header, and one more to detect that there are too many.
    const QList<CsvRow> table = parseCsv(decoded(bytes), maxBatchRows + 2);
    BatchList list;
    for (qsizetype i = 0; i < table.size(); ++i) {
        const QStringList &cells = table[i].cells;
        if (cells.first().isEmpty() || (i == 0 && isHeader(table[i])))
            continue;
        list.rows.append({table[i].line, cells.first(), cells.value(1)});
    }
    if (list.rows.size() > maxBatchRows || table.size() > maxBatchRows + 1)
        return {{}, true};
    giveNames(list.rows);
    return list;
}

} // namespace qr
