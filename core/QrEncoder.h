// SPDX-License-Identifier: GPL-3.0-or-later
// Encodes a text as the modules (dark and light squares) of a QR code. Pure; any thread; does not throw.
#pragma once

#include <QBitArray>
#include <QString>

#include <optional>

namespace core
{

// Error correction: tolerates damage of about 7, 15, 25 and 30 percent.
enum class QrCorrection { Low, Medium, Quartile, High };

class QrMatrix
{
public:
    QrMatrix(int size, QBitArray dark) : m_size(size), m_dark(std::move(dark)) {}

    int size() const { return m_size; } // modules per side, 21 to 177; without the quiet zone
    bool isDark(int x, int y) const     // false outside
    {
        return x >= 0 && y >= 0 && x < m_size && y < m_size && m_dark.testBit(y * m_size + x);
    }
    bool operator==(const QrMatrix &) const = default;

private:
    int m_size;
    QBitArray m_dark; // row by row
};

// Quiet zone required by readers, in modules (ISO/IEC 18004).
constexpr int qrQuietZone = 4;

struct QrCode {
    std::optional<QrMatrix> matrix; // nullopt for a text that is empty or too long
    qsizetype tooLongBy =
        0; // number of characters (Unicode code points) to remove from the end so that the text fits
};

// Digits, and upper-case texts in the code's alphanumeric set, take less room than other texts, which are
// encoded as UTF-8. A higher correction level is used if the size of the code stays the same.
QrCode encodeQr(const QString &text, QrCorrection correction);

} // namespace core
