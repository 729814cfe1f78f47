// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/XmpPacket.h"

#include <QCryptographicHash>
#include <QMap>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <cctype>
#include <functional>
#include <numeric>
#include <optional>
#include <vector>

namespace conversion
{

namespace
{

const QString rdfSpace = QStringLiteral("http://www.w3.org/1999/02/22-rdf-syntax-ns#");
const QString noteSpace = QStringLiteral("http://ns.adobe.com/xmp/note/");
const QString extensionNote = QStringLiteral("HasExtendedXMP");
const QString description = QStringLiteral("Description");
const QString exifSpace = QStringLiteral("http://ns.adobe.com/exif/1.0/");
const QString tiffSpace = QStringLiteral("http://ns.adobe.com/tiff/1.0/");

// Copies XMP property by property. A property is an attribute or child of one of the descriptions in
// "rdf:RDF"; properties are numbered consecutively. The note about an extension is dropped.
class PropertyCopy
{
public:
    enum class Frame { None, WithoutPacket, Whole }; // which enclosing elements are written
    PropertyCopy(const QByteArray &xmp, Frame frame) : m_reader(xmp), m_frame(frame) {}

    std::function<bool(std::size_t index)> wants = [](std::size_t) { return true; };
    std::function<void(QXmlStreamWriter &)> atEnd; // of the rdf:RDF element
    QByteArray digest;                             // digest of the extension to reference
    bool upright = false;                          // set the orientation to normal
    bool withPlace = true;                         // if false, drop GPS data wherever it is stored

    // False if this is not XMP.
    bool copy(QXmlStreamWriter &writer);
    // Approximate sizes of the dropped properties, in characters.
    const std::vector<qint64> &sizes() const { return m_sizes; }

private:
    void copyFrame(QXmlStreamWriter &writer);
    void copyList(QXmlStreamWriter &writer);
    void copyDescription(QXmlStreamWriter &writer);
    void copyAttributes(QXmlStreamWriter &writer);
    void copyElement(QXmlStreamWriter &writer);
    void copyStart(QXmlStreamWriter &writer);
    bool isPlace(QStringView space, QStringView name) const
    {
        return !withPlace && space == exifSpace && name.startsWith(QStringLiteral("GPS"));
    }
    bool isOrientation(QStringView space, QStringView name) const
    {
        return upright && space == tiffSpace && name == QStringLiteral("Orientation");
    }
    std::optional<std::size_t> counted(QStringView space, QStringView name);

    QXmlStreamReader m_reader;
    const Frame m_frame;
    QMap<QString, QString> m_spaces; // of the enclosing elements, by prefix
    std::vector<qint64> m_sizes;
};

void addSpaces(QMap<QString, QString> &spaces, const QXmlStreamReader &reader)
{
    for (const QXmlStreamNamespaceDeclaration &space : reader.namespaceDeclarations())
        spaces.insert(space.prefix().toString(), space.namespaceUri().toString());
}

// Namespaces go into the current tag if it is still open, otherwise into the next one.
void finishTag(QXmlStreamWriter &writer)
{
    writer.writeCharacters(QString());
}

bool PropertyCopy::copy(QXmlStreamWriter &writer)
{
    bool found = false;
    while (!m_reader.atEnd()) {
        m_reader.readNext();
        if (m_reader.isDTD() || m_reader.hasError())
            return false;
        copyFrame(writer);
        if (!m_reader.isStartElement())
            continue;
        addSpaces(m_spaces, m_reader);
        if (m_reader.namespaceUri() == rdfSpace) {
            copyList(writer);
            found = true;
        }
    }
    return found && !m_reader.hasError();
}

void PropertyCopy::copyFrame(QXmlStreamWriter &writer)
{
    const bool isPacket = m_reader.isProcessingInstruction();
    if (m_frame == Frame::None || m_reader.isStartDocument() || (m_frame == Frame::WithoutPacket && isPacket))
        return;
    // Before version 6.5, Qt replaces the prefixes when it copies a start element.
    if (m_reader.isStartElement())
        copyStart(writer);
    else
        writer.writeCurrentToken(m_reader);
}

void PropertyCopy::copyList(QXmlStreamWriter &writer)
{
    while (m_reader.readNextStartElement()) {
        if (m_reader.name() == description)
            copyDescription(writer);
        else
            m_reader.skipCurrentElement();
    }
    if (atEnd)
        atEnd(writer);
    if (m_frame != Frame::None)
        writer.writeEndElement();
}

void PropertyCopy::copyDescription(QXmlStreamWriter &writer)
{
    QMap<QString, QString> spaces = m_spaces;
    addSpaces(spaces, m_reader);
    if (!digest.isEmpty())
        spaces.insert(QStringLiteral("xmpNote"), noteSpace);
    finishTag(writer);
    for (auto space = spaces.cbegin(); space != spaces.cend(); ++space)
        writer.writeNamespace(space.value(), space.key());
    writer.writeStartElement(rdfSpace, description);
    copyAttributes(writer);
    while (m_reader.readNextStartElement()) {
        const auto index = counted(m_reader.namespaceUri(), m_reader.name());
        if (index && wants(*index)) {
            copyElement(writer);
            continue;
        }
        const qint64 start = m_reader.characterOffset();
        m_reader.skipCurrentElement();
        if (index)
            m_sizes[*index] = m_reader.characterOffset() - start;
    }
    writer.writeEndElement();
}

void PropertyCopy::copyAttributes(QXmlStreamWriter &writer)
{
    for (const QXmlStreamAttribute &attribute : m_reader.attributes()) {
        if (attribute.namespaceUri() == rdfSpace) {
            writer.writeAttribute(attribute); // rdf:about, the subject of the description
        } else if (const auto index = counted(attribute.namespaceUri(), attribute.name())) {
            m_sizes[*index] = attribute.value().size();
            if (isOrientation(attribute.namespaceUri(), attribute.name()))
                writer.writeAttribute(tiffSpace, attribute.name().toString(), QStringLiteral("1"));
            else if (wants(*index))
                writer.writeAttribute(attribute);
        }
    }
    if (!digest.isEmpty())
        writer.writeAttribute(noteSpace, extensionNote, QString::fromLatin1(digest));
    digest.clear(); // only once
}

void PropertyCopy::copyElement(QXmlStreamWriter &writer)
{
    if (isOrientation(m_reader.namespaceUri(), m_reader.name())) {
        writer.writeTextElement(tiffSpace, m_reader.name().toString(), QStringLiteral("1"));
        m_reader.skipCurrentElement();
        return;
    }
    int depth = 0;
    do {
        if (m_reader.isStartElement() && isPlace(m_reader.namespaceUri(), m_reader.name())) {
            m_reader.skipCurrentElement();
        } else if (m_reader.isStartElement()) {
            copyStart(writer);
            ++depth;
        } else {
            writer.writeCurrentToken(m_reader);
            depth -= m_reader.isEndElement() ? 1 : 0;
        }
        if (depth > 0)
            m_reader.readNext();
    } while (depth > 0 && !m_reader.hasError());
}

void PropertyCopy::copyStart(QXmlStreamWriter &writer)
{
    finishTag(writer);
    for (const QXmlStreamNamespaceDeclaration &space : m_reader.namespaceDeclarations())
        writer.writeNamespace(space.namespaceUri().toString(), space.prefix().toString());
    writer.writeStartElement(m_reader.namespaceUri().toString(), m_reader.name().toString());
    for (const QXmlStreamAttribute &attribute : m_reader.attributes()) {
        if (!isPlace(attribute.namespaceUri(), attribute.name()))
            writer.writeAttribute(attribute);
    }
}

std::optional<std::size_t> PropertyCopy::counted(QStringView space, QStringView name)
{
    if ((space == noteSpace && name == extensionNote) || isPlace(space, name))
        return std::nullopt;
    m_sizes.push_back(0);
    return m_sizes.size() - 1;
}

// The longest properties that must be moved to make `xmp` short enough, by index.
std::vector<bool> longestProperties(const QByteArray &xmp, qsizetype maxBytes)
{
    QByteArray nothing;
    QXmlStreamWriter writer(&nothing);
    PropertyCopy measure(xmp, PropertyCopy::Frame::None);
    measure.wants = [](std::size_t) { return false; };
    if (!measure.copy(writer))
        return {};
    const std::vector<qint64> &sizes = measure.sizes();
    std::vector<std::size_t> byLength(sizes.size());
    std::iota(byLength.begin(), byLength.end(), std::size_t(0));
    std::ranges::stable_sort(byLength, std::ranges::greater(), [&](std::size_t i) { return sizes[i]; });
    std::vector<bool> longest(sizes.size(), false);
    qint64 left = xmp.size();
    for (const std::size_t index : byLength) {
        if (left <= maxBytes)
            break;
        left -= sizes[index];
        longest[index] = true;
    }
    return longest;
}

} // namespace

QByteArray adaptedXmp(const QByteArray &xmp, bool keepPlace)
{
    QByteArray adapted;
    QXmlStreamWriter writer(&adapted);
    PropertyCopy properties(xmp, PropertyCopy::Frame::Whole);
    properties.upright = true;
    properties.withPlace = keepPlace;
    return properties.copy(writer) ? adapted : QByteArray();
}

SplitXmp splitXmp(const QByteArray &xmp, qsizetype maxBytes)
{
    constexpr qsizetype growth = 2048; // namespaces and the digest
    const std::vector<bool> moved = longestProperties(xmp, maxBytes - growth);
    SplitXmp split;
    const auto write = [&](bool extension, QByteArray &to) {
        QXmlStreamWriter writer(&to);
        PropertyCopy properties(xmp,
                                extension ? PropertyCopy::Frame::WithoutPacket : PropertyCopy::Frame::Whole);
        properties.wants = [&](std::size_t index) { return moved[index] == extension; };
        properties.digest = extension ? QByteArray() : split.digest;
        return properties.copy(writer);
    };
    if (moved.empty() || !write(true, split.extension))
        return {};
    split.digest = QCryptographicHash::hash(split.extension, QCryptographicHash::Md5).toHex().toUpper();
    if (!write(false, split.packet) || split.packet.size() > maxBytes)
        return {};
    return split;
}

QByteArray extensionDigest(const QByteArray &packet)
{
    constexpr qsizetype length = 32;
    constexpr qsizetype maxBetween = 8; // an equals sign and a quotation mark, or the end of a tag
    const auto isDigit = [](char sign) { return std::isxdigit(static_cast<uchar>(sign)) != 0; };
    qsizetype at = packet.indexOf(":HasExtendedXMP");
    if (at < 0)
        return {};
    at += extensionNote.size() + 1;
    const qsizetype end = std::min(packet.size(), at + maxBetween);
    while (at < end && !isDigit(packet[at]))
        ++at;
    const QByteArray digest = packet.mid(at, length).toUpper();
    return digest.size() == length && std::ranges::all_of(digest, isDigit) ? digest : QByteArray();
}

QByteArray mergedXmp(const QByteArray &packet, const QByteArray &extension)
{
    QByteArray merged;
    QXmlStreamWriter writer(&merged);
    bool whole = true;
    PropertyCopy properties(packet, PropertyCopy::Frame::Whole);
    properties.atEnd = [&](QXmlStreamWriter &to) {
        whole = PropertyCopy(extension, PropertyCopy::Frame::None).copy(to);
    };
    return properties.copy(writer) && whole ? merged : packet;
}

} // namespace conversion
