// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Edid.h"

namespace systeminfo
{

namespace
{

constexpr qsizetype blockSize = 128;
constexpr int firstDescriptor = 54, descriptorSize = 18, descriptorCount = 4;

class Block
{
public:
    explicit Block(const QByteArray &bytes) : m_bytes(bytes) {}

    int at(int index) const { return static_cast<quint8>(m_bytes.at(index)); }
    int word(int index) const { return at(index) | at(index + 1) << 8; } // little-endian

    bool isSound() const
    {
        static const QByteArray header = QByteArray::fromHex("00ffffffffffff00");
        if (m_bytes.size() < blockSize || !m_bytes.startsWith(header))
            return false;
        int sum = 0;
        for (int i = 0; i < blockSize; ++i)
            sum += at(i);
        return sum % 256 == 0;
    }

    // A descriptor's text: up to 13 characters, terminated by a line feed and padded with blanks.
    QString text(int start) const
    {
        QString result;
        for (int i = start + 5; i < start + descriptorSize && at(i) != '\n'; ++i)
            result += at(i) >= 0x20 && at(i) < 0x7f ? QChar(at(i)) : QChar(u'?');
        return result.trimmed();
    }

private:
    const QByteArray &m_bytes;
};

// Three letters of five bits each, big-endian.
QString makerOf(const Block &block)
{
    const int code = block.at(8) << 8 | block.at(9);
    QString maker;
    for (const int shift : {10, 5, 0}) {
        const int letter = code >> shift & 31;
        if (letter < 1 || letter > 26)
            return {};
        maker += QChar('A' + letter - 1);
    }
    return maker;
}

// The first detailed timing is the preferred one, a flat panel's native mode.
void readTiming(MonitorIdentity &monitor, const Block &block)
{
    const int start = firstDescriptor;
    const int clock = block.word(start); // units of 10 kHz
    if (clock == 0)
        return;
    const int width = block.at(start + 2) | (block.at(start + 4) & 0xf0) << 4;
    const int blankWidth = block.at(start + 3) | (block.at(start + 4) & 0x0f) << 8;
    const int height = block.at(start + 5) | (block.at(start + 7) & 0xf0) << 4;
    const int blankHeight = block.at(start + 6) | (block.at(start + 7) & 0x0f) << 8;
    if (width == 0 || height == 0)
        return;
    const bool interlaced = block.at(start + 17) & 0x80;
    monitor.nativeSize = {width, interlaced ? height * 2 : height};
    const double pixels = double(width + blankWidth) * double(height + blankHeight);
    monitor.refreshRate = clock * 10000.0 / pixels;
    const QSize millimetres(block.at(start + 12) | (block.at(start + 14) & 0xf0) << 4,
                            block.at(start + 13) | (block.at(start + 14) & 0x0f) << 8);
    if (!millimetres.isEmpty())
        monitor.imageMillimetres = millimetres;
}

} // namespace

std::optional<MonitorIdentity> readEdid(const QByteArray &bytes)
{
    const Block block(bytes);
    if (!block.isSound())
        return {};
    MonitorIdentity monitor;
    monitor.maker = makerOf(block);
    // Both kinds of year count from 1990: the year of manufacture, and the model year (marked by week 255).
    monitor.year = block.at(17) > 0 ? 1990 + block.at(17) : 0;
    if (block.at(21) > 0 && block.at(22) > 0)
        monitor.imageMillimetres = QSize(block.at(21), block.at(22)) * 10;
    readTiming(monitor, block);
    for (int i = 0; i < descriptorCount; ++i) {
        const int start = firstDescriptor + i * descriptorSize;
        if (block.word(start) != 0)
            continue; // a detailed timing
        if (block.at(start + 3) == 0xfc)
            monitor.name = block.text(start);
        else if (block.at(start + 3) == 0xff)
            monitor.serialNumber = block.text(start);
    }
    return monitor;
}

} // namespace systeminfo
