// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/metadata/Boxes.h"

#include <optional>
#include <vector>

// The items of a HEIF, HEIC or AVIF file: images and their metadata.
namespace conversion
{

inline const QByteArray xmpType("application/rdf+xml"); // content type of the XMP item

// Reads consecutive numbers; returns zeros after the end.
class Numbers
{
public:
    explicit Numbers(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    quint64 take(int bytes)
    {
        if (bytes > 8 || m_at + bytes > m_bytes.size()) {
            m_failed = true;
            return 0;
        }
        quint64 number = 0;
        for (int i = 0; i < bytes; ++i)
            number = number << 8 | static_cast<uchar>(m_bytes[m_at++]);
        return number;
    }
    quint32 takeId(bool isLong) { return static_cast<quint32>(take(isLong ? 4 : 2)); }
    QByteArray takeText() // up to the next NUL
    {
        const qsizetype end = m_bytes.indexOf('\0', m_at);
        const QByteArray text = m_bytes.mid(m_at, end < 0 ? -1 : end - m_at);
        m_at = end < 0 ? m_bytes.size() : end + 1;
        return text;
    }
    QByteArray takeBytes(int bytes)
    {
        const QByteArray taken = m_bytes.mid(m_at, bytes);
        m_at = std::min(m_at + bytes, m_bytes.size());
        return taken;
    }
    qsizetype at() const { return m_at; }
    bool failed() const { return m_failed; }

private:
    QByteArray m_bytes;
    qsizetype m_at = 0;
    bool m_failed = false;
};

struct Extent {
    quint64 offset = 0;
    quint64 length = 0;
};
enum class Place { File, ItemData, Other };
struct Location {
    quint32 id = 0;
    Place place = Place::File;
    quint32 reference = 0; // 0: this file
    std::vector<Extent> extents;
};

// The items as described by the file's "meta" box.
struct Items {
    Box meta;
    QByteArray content; // content of the meta box, after its version
    quint32 primary = 0;
    quint32 largest = 0; // largest item id
    std::optional<quint32> exif;
    std::optional<quint32> xmp;
    std::vector<Location> locations;
    Box itemData; // within the content; empty if there is none
};

// nullopt if a part of the file is not understood.
std::optional<Items> readItems(QIODevice &device);

// The data of an item; empty if it does not exist, is stored elsewhere or is too long.
QByteArray itemContent(QIODevice &device, const Items &items, std::optional<quint32> id);

// The sum of its extents' lengths; 0 for an item that does not exist.
qint64 itemBytes(const Items &items, std::optional<quint32> id);

} // namespace conversion
