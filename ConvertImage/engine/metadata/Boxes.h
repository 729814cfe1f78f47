// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/MetadataBytes.h"

#include <QByteArray>
#include <QIODevice>

#include <utility>

// The boxes of JPEG XL, HEIF, HEIC and AVIF files.
namespace conversion
{

struct Box {
    QByteArray type;
    qint64 at = 0;
    qint64 content = 0;
    qint64 end = 0;
};

// Stops when `visit` returns false, or at a box that is not completely between the two ends.
template <class Visit>
void forEachBox(QIODevice &device, qint64 from, qint64 end, Visit visit)
{
    qint64 at = from;
    for (int part = 0; part < maxMetadataParts && at < end && device.seek(at); ++part) {
        const QByteArray header = device.read(8);
        if (header.size() < 8)
            return;
        Box box{header.mid(4), at, at + 8, 0};
        qint64 length = bigNumber(header, 0);
        if (length == 1) {
            const QByteArray large = device.read(8);
            length = large.size() == 8 ? qFromBigEndian<qint64>(large.constData()) : 0;
            box.content += 8;
        } else if (length == 0) {
            length = end - at;
        }
        if (length < box.content - at || length > end - at)
            return;
        box.end = at + length;
        if (!visit(std::as_const(box)))
            return;
        at = box.end;
    }
}

inline QByteArray contentOf(QIODevice &device, const Box &box)
{
    return device.seek(box.content) ? readPart(device, box.end - box.content) : QByteArray();
}

inline QByteArray makeBox(const QByteArray &type, const QByteArray &content)
{
    return bigBytes(static_cast<quint32>(content.size() + 8)) + type + content;
}

inline QByteArray shortBytes(quint32 number)
{
    return bigBytes(number).right(2);
}

} // namespace conversion
