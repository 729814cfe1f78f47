// SPDX-License-Identifier: GPL-3.0-or-later
// A text as the modules (dark and light squares) of a QR code. Pure; callable from any thread, throws
// nothing.
#pragma once

#include <QBitArray>
#include <QString>

#include <optional>

namespace core
{

// How much of a code may be damaged or covered: about 7, 15, 25 and 30 percent.
enum class QrCorrection { Low, Medium, Quartile, High };

class QrMatrix
{
public:
    QrMatrix(int size, QBitArray dark) : m_size(size), m_dark(std::move(dark)) {}

    int size() const { return m_size; } // modules a side, 21 to 177; without the quiet zone around it
    bool isDark(int x, int y) const     // false outside
    {
        return x >= 0 && y >= 0 && x < m_size && y < m_size && m_dark.testBit(y * m_size + x);
    }
    bool operator==(const QrMatrix &) const = default;

private:
    int m_size;
    QBitArray m_dark; // row by row
};

// The quiet zone that readers ask for, in modules (ISO/IEC 18004).
constexpr int qrQuietZone = 4;

struct QrCode {
    std::optional<QrMatrix> matrix; // none for an empty text and for one that is too long
    qsizetype tooLongBy = 0; // characters (Unicode code points) to take from the end before the text fits
};

// Digits, and upper-case texts of the code's own alphabet, need less room than others, which are encoded as
// UTF-8. Where the code stays the same size, it gets a higher correction than asked for.
QrCode encodeQr(const QString &text, QrCorrection correction);

} // namespace core
