// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QrEncoder.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <exception>
#include <qrcodegen/qrcodegen.hpp>
#include <string_view>
#include <vector>

namespace core
{

namespace
{

using qrcodegen::QrSegment;

// Capacity of the largest code (177 modules per side) in characters of each kind (ISO/IEC 18004, table 7).
struct Capacity {
    QrCorrection correction;
    qrcodegen::QrCode::Ecc level;
    qsizetype digits;
    qsizetype alphanumeric;
    qsizetype bytes;
};

constexpr std::array<Capacity, 4> capacities{{
    {QrCorrection::Low, qrcodegen::QrCode::Ecc::LOW, 7089, 4296, 2953},
    {QrCorrection::Medium, qrcodegen::QrCode::Ecc::MEDIUM, 5596, 3391, 2331},
    {QrCorrection::Quartile, qrcodegen::QrCode::Ecc::QUARTILE, 3993, 2420, 1663},
    {QrCorrection::High, qrcodegen::QrCode::Ecc::HIGH, 3057, 1852, 1273},
}};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isAlphanumeric(char c)
{
    constexpr std::string_view others = " $%*+-./:";
    return isDigit(c) || (c >= 'A' && c <= 'Z') || others.find(c) != std::string_view::npos;
}

qsizetype leading(const QByteArray &text, bool (*belongs)(char))
{
    return std::find_if_not(text.begin(), text.end(), belongs) - text.begin();
}

bool startsCharacter(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

qsizetype characters(const QByteArray &text, qsizetype from)
{
    return std::count_if(text.begin() + from, text.end(), startsCharacter);
}

// The longest prefix of the text that fits, in bytes.
qsizetype fitting(const QByteArray &text, const Capacity &capacity)
{
    qsizetype bytes = std::min(text.size(), capacity.bytes);
    while (bytes < text.size() && bytes > 0 && !startsCharacter(text[bytes])) {
        --bytes;
    }
    return std::max({bytes, std::min(leading(text, isDigit), capacity.digits),
                     std::min(leading(text, isAlphanumeric), capacity.alphanumeric)});
}

// The library's own segmentation is not used, since it stops at the first zero byte.
std::vector<QrSegment> segments(const QByteArray &text)
{
    if (leading(text, isDigit) == text.size()) {
        return {QrSegment::makeNumeric(text.constData())};
    }
    if (leading(text, isAlphanumeric) == text.size()) {
        return {QrSegment::makeAlphanumeric(text.constData())};
    }
    return {QrSegment::makeBytes({text.begin(), text.end()})};
}

QrMatrix matrixOf(const qrcodegen::QrCode &code)
{
    const int size = code.getSize();
    QBitArray dark(qsizetype(size) * size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            dark.setBit(y * size + x, code.getModule(x, y));
        }
    }
    return {size, dark};
}

} // namespace

QrCode encodeQr(const QString &text, QrCorrection correction)
{
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty()) {
        return {};
    }
    const Capacity &capacity = *std::ranges::find(capacities, correction, &Capacity::correction);
    if (const qsizetype fits = fitting(bytes, capacity); fits < bytes.size()) {
        return {std::nullopt, characters(bytes, fits)};
    }
    try {
        return {matrixOf(qrcodegen::QrCode::encodeSegments(segments(bytes), capacity.level)), 0};
    } catch (const std::exception &error) {
        // Only reached if memory runs out: the text fits.
        qWarning("encodeQr: %s", error.what());
        return {};
    }
}

} // namespace core
