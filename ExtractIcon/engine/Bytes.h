// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtEndian>

#include <optional>

// Reads untrusted bytes. Every offset is checked; sizes are 64-bit, so that sums of 32-bit fields cannot
// overflow.
namespace icons
{

// nullopt if the range is not completely inside.
inline std::optional<QByteArrayView> range(QByteArrayView bytes, qint64 at, qint64 length)
{
    if (at < 0 || length < 0 || at > bytes.size() || length > bytes.size() - at)
        return std::nullopt;
    return bytes.sliced(static_cast<qsizetype>(at), static_cast<qsizetype>(length));
}

// The little-endian number at `at`; 0 if the data ends before it.
template <class Number>
Number number(QByteArrayView bytes, qint64 at)
{
    const std::optional<QByteArrayView> found = range(bytes, at, sizeof(Number));
    return found ? qFromLittleEndian<Number>(found->data()) : Number(0);
}

template <class Number>
void append(QByteArray &bytes, Number value)
{
    const Number stored = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char *>(&stored), sizeof stored);
}

} // namespace icons
