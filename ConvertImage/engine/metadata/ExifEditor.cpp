// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/ExifEditor.h"

#include "ConvertImage/engine/metadata/TiffTags.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <optional>

namespace conversion
{

namespace
{

using namespace tiff;

class Exif
{
public:
    explicit Exif(QByteArray &bytes) : m_bytes(bytes), m_big(bytes.startsWith("MM")) {}

    bool isUsable() const
    {
        return m_bytes.size() >= headerBytes && (m_big || m_bytes.startsWith("II")) && word(2) == 42 &&
               entryCount(firstDirectory()) > 0;
    }

    qint64 firstDirectory() const { return number(4); }
    qint64 nextDirectory(qint64 directory) const
    {
        return number(directory + 2 + entryCount(directory) * entryBytes);
    }

    // 0 for a directory that is not completely within the data.
    int entryCount(qint64 directory) const
    {
        if (directory < headerBytes || directory + 2 > m_bytes.size())
            return 0;
        const int count = word(directory);
        return directory + 2 + count * entryBytes + 4 <= m_bytes.size() ? count : 0;
    }

    std::optional<qint64> find(qint64 directory, quint16 tag) const
    {
        for (int i = 0; i < entryCount(directory); ++i) {
            const qint64 entry = directory + 2 + i * entryBytes;
            if (word(entry) == tag)
                return entry;
        }
        return std::nullopt;
    }

    qint64 value(qint64 entry) const
    {
        return word(entry + 2) == shortType ? word(entry + 8) : number(entry + 8);
    }

    void setValue(qint64 entry, int value)
    {
        if (word(entry + 2) == shortType)
            setWord(entry + 8, static_cast<quint16>(std::min(value, 0xffff)));
        else if (word(entry + 2) == longType)
            setNumber(entry + 8, static_cast<quint32>(value));
    }

    void setNextDirectory(qint64 directory, quint32 next)
    {
        setNumber(directory + 2 + entryCount(directory) * entryBytes, next);
    }

    // Overwrites a directory and the values it points to with zeros.
    void clearDirectory(qint64 directory)
    {
        const int count = entryCount(directory);
        for (int i = 0; i < count; ++i) {
            const qint64 entry = directory + 2 + i * entryBytes;
            const quint16 type = word(entry + 2);
            const qint64 bytes =
                type < bytesOfType.size() ? qint64(bytesOfType[type]) * number(entry + 4) : 0;
            if (bytes > 4)
                clear(number(entry + 8), bytes);
        }
        if (count > 0)
            clear(directory, 2 + count * entryBytes);
    }

    void removeEntry(qint64 directory, qint64 entry)
    {
        const int count = entryCount(directory);
        const qint64 end = directory + 2 + count * entryBytes + 4;
        m_bytes = m_bytes.left(entry) + m_bytes.mid(entry + entryBytes, end - entry - entryBytes) +
                  QByteArray(entryBytes, '\0') + m_bytes.mid(end);
        setWord(directory, static_cast<quint16>(count - 1));
    }

    void clear(qint64 at, qint64 bytes)
    {
        const qint64 end = std::min<qint64>(m_bytes.size(), at + bytes);
        if (at >= headerBytes && at < end)
            std::fill(m_bytes.begin() + at, m_bytes.begin() + end, '\0');
    }

private:
    quint16 word(qint64 at) const
    {
        const char *from = m_bytes.constData() + at;
        return m_big ? qFromBigEndian<quint16>(from) : qFromLittleEndian<quint16>(from);
    }
    quint32 number(qint64 at) const
    {
        const char *from = m_bytes.constData() + at;
        return m_big ? qFromBigEndian<quint32>(from) : qFromLittleEndian<quint32>(from);
    }
    void setWord(qint64 at, quint16 value)
    {
        char *to = m_bytes.data() + at;
        m_big ? qToBigEndian(value, to) : qToLittleEndian(value, to);
    }
    void setNumber(qint64 at, quint32 value)
    {
        char *to = m_bytes.data() + at;
        m_big ? qToBigEndian(value, to) : qToLittleEndian(value, to);
    }

    QByteArray &m_bytes;
    const bool m_big;
};

void clearThumbnail(Exif &exif)
{
    const qint64 first = exif.firstDirectory();
    const qint64 thumbnail = exif.nextDirectory(first);
    if (exif.entryCount(thumbnail) == 0)
        return;
    const auto offset = exif.find(thumbnail, thumbnailOffsetTag);
    const auto length = exif.find(thumbnail, thumbnailLengthTag);
    if (offset && length)
        exif.clear(exif.value(*offset), exif.value(*length));
    // If it is the first directory too, clearing it would remove everything.
    if (thumbnail != first)
        exif.clearDirectory(thumbnail);
}

} // namespace

int exifOrientation(const QByteArray &exif)
{
    QByteArray bytes = exif;
    const Exif editor(bytes);
    const auto entry =
        editor.isUsable() ? editor.find(editor.firstDirectory(), orientationTag) : std::nullopt;
    const qint64 value = entry ? editor.value(*entry) : 0;
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 0;
}

QByteArray adaptedExif(QByteArray bytes, const QSize &size, bool keepPlace)
{
    Exif exif(bytes);
    if (!exif.isUsable())
        return {};
    const qint64 first = exif.firstDirectory();
    clearThumbnail(exif);
    if (exif.entryCount(first) == 0)
        return {}; // it overlapped the thumbnail
    exif.setNextDirectory(first, 0);
    if (const auto place = keepPlace ? std::nullopt : exif.find(first, placeDirectoryTag)) {
        const qint64 directory = exif.value(*place);
        exif.removeEntry(first, *place);
        if (directory != first)
            exif.clearDirectory(directory);
    }
    if (exif.entryCount(first) == 0)
        return {};
    if (const auto orientation = exif.find(first, orientationTag))
        exif.setValue(*orientation, 1);
    if (const auto width = exif.find(first, imageWidthTag))
        exif.setValue(*width, size.width());
    if (const auto height = exif.find(first, imageHeightTag))
        exif.setValue(*height, size.height());
    if (const auto details = exif.find(first, exifDirectoryTag)) {
        const qint64 directory = exif.value(*details);
        if (const auto width = exif.find(directory, widthTag))
            exif.setValue(*width, size.width());
        if (const auto height = exif.find(directory, heightTag))
            exif.setValue(*height, size.height());
    }
    return bytes;
}

} // namespace conversion
