// SPDX-License-Identifier: GPL-3.0-or-later
#include "Handler.h"

#include "FileType.h"

#include <QIODevice>
#include <QVariant>

namespace heif
{

bool Handler::canRead() const
{
    if (m_finished || m_failed || !device())
        return false;
    if (m_reader)
        return true;
    const QByteArray found = formatOf(*device());
    if (!found.isEmpty())
        setFormat(found);
    return !found.isEmpty();
}

Reader *Handler::reader() const
{
    if (!m_reader && canRead()) {
        initialize();
        m_reader = Reader::open(*device());
        m_failed = !m_reader;
    }
    return m_reader.get();
}

bool Handler::read(QImage *image)
{
    Reader *source = m_finished ? nullptr : reader();
    m_finished = true;
    return source && source->read(*image);
}

bool Handler::write(const QImage &image)
{
    initialize();
    m_writeOptions.av1 = format() == "avif";
    return heif::write(*device(), image, m_writeOptions);
}

bool Handler::supportsOption(ImageOption option) const
{
    return option == Size || option == ImageFormat || option == Quality || option == ImageTransformation;
}

// What is read is upright already: the reader is told that nothing is left to do.
QVariant Handler::option(ImageOption option) const
{
    if (option == Quality)
        return m_writeOptions.quality;
    if (option == ImageTransformation)
        return static_cast<int>(TransformationNone);
    const Reader *source = supportsOption(option) ? reader() : nullptr;
    if (!source)
        return {};
    return option == Size ? QVariant(source->size()) : QVariant(source->format());
}

void Handler::setOption(ImageOption option, const QVariant &value)
{
    if (option == Quality)
        m_writeOptions.quality = value.toInt();
    else if (option == ImageTransformation)
        m_writeOptions.transformation = static_cast<Transformations>(value.toInt());
}

} // namespace heif
