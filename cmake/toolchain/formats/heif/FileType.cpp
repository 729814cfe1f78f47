// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileType.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace heif
{

namespace
{

constexpr qsizetype minorVersionEnd = 16;
constexpr qsizetype maxBoxBytes = 256; // some 60 brands; files have three to ten

QByteArray codecOf(const QByteArray &brand)
{
    static constexpr std::array<const char *, 2> av1 = {"avif", "avis"};
    static constexpr std::array<const char *, 6> hevc = {"heic", "heix", "heim", "heis", "hevc", "hevx"};
    const auto same = [&brand](const char *name) { return brand == name; };
    if (std::ranges::any_of(av1, same))
        return "avif";
    if (std::ranges::any_of(hevc, same))
        return "heic";
    return {};
}

// Brands that say "a picture in this container" and leave the codec to the others.
bool isGeneral(const QByteArray &brand)
{
    return brand == "mif1" || brand == "msf1" || brand == "mif2" || brand == "miaf";
}

} // namespace

QByteArray formatOf(QIODevice &device)
{
    const QByteArray start = device.peek(maxBoxBytes);
    if (start.size() < minorVersionEnd || start.mid(4, 4) != "ftyp")
        return {};
    const QByteArray major = start.mid(8, 4);
    if (const QByteArray codec = codecOf(major); !codec.isEmpty())
        return codec;
    if (!isGeneral(major))
        return {};
    const qsizetype boxEnd = std::min<qsizetype>(qFromBigEndian<quint32>(start.constData()), start.size());
    for (qsizetype at = minorVersionEnd; at + 4 <= boxEnd; at += 4) {
        if (const QByteArray codec = codecOf(start.mid(at, 4)); !codec.isEmpty())
            return codec;
    }
    return "heif";
}

} // namespace heif
