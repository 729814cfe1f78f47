// SPDX-License-Identifier: GPL-3.0-or-later
#include "Handler.h"

#include <QColorSpace>
#include <QIODevice>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>

namespace heif
{

namespace
{

int64_t position(void *device)
{
    return static_cast<QIODevice *>(device)->pos();
}

int readBytes(void *data, size_t size, void *device)
{
    const auto wanted = static_cast<qint64>(size);
    return static_cast<QIODevice *>(device)->read(static_cast<char *>(data), wanted) == wanted ? 0 : -1;
}

int seek(int64_t to, void *device)
{
    return static_cast<QIODevice *>(device)->seek(to) ? 0 : -1;
}

heif_reader_grow_status waitForSize(int64_t size, void *device)
{
    return size <= static_cast<QIODevice *>(device)->size() ? heif_reader_grow_status_size_reached
                                                            : heif_reader_grow_status_size_beyond_eof;
}

// libheif's own limits would let a picture of four gigabytes pass. A block may be larger than the picture by
// the padding of its rows.
void limitMemory(heif_context *context)
{
    const auto limit = static_cast<uint64_t>(QImageReader::allocationLimit()) << 20;
    if (limit == 0)
        return;
    heif_security_limits *limits = heif_context_get_security_limits(context);
    limits->max_image_size_pixels = limit / sizeof(QRgb);
    limits->max_memory_block_size = limit + limit / 8;
    limits->max_color_profile_size = 16 << 20;
}

void copyRow8(const uchar *from, QRgb *to, int width, bool alpha)
{
    if (alpha) {
        for (int x = 0; x < width; ++x, from += 4)
            to[x] = qRgba(from[0], from[1], from[2], from[3]);
    } else {
        for (int x = 0; x < width; ++x, from += 3)
            to[x] = qRgb(from[0], from[1], from[2]);
    }
}

// `depth` significant bits (9 to 16) are widened to 16 by repeating the upper ones, so that full stays full.
void copyRow16(const uchar *from, quint16 *to, int width, bool alpha, int depth)
{
    const auto next = [&from, depth] {
        const quint32 value = qFromLittleEndian<quint16>(from);
        from += 2;
        return static_cast<quint16>(value << (16 - depth) | value >> (2 * depth - 16));
    };
    for (int x = 0; x < width; ++x, to += 4) {
        to[0] = next();
        to[1] = next();
        to[2] = next();
        to[3] = alpha ? next() : quint16(0xffff);
    }
}

} // namespace

std::unique_ptr<Reader> Reader::open(QIODevice &device)
{
    if (device.isSequential())
        return {};
    std::unique_ptr<Reader> reader(new Reader);
    reader->m_device = &device;
    return reader->openContext() ? std::move(reader) : nullptr;
}

bool Reader::openContext()
{
    m_callbacks.reader_api_version = 1;
    m_callbacks.get_position = position;
    m_callbacks.read = readBytes;
    m_callbacks.seek = seek;
    m_callbacks.wait_for_file_size = waitForSize;
    m_context.reset(heif_context_alloc());
    if (!m_context || !m_device->seek(0))
        return false;
    limitMemory(m_context.get());
    if (heif_context_read_from_reader(m_context.get(), &m_callbacks, m_device, nullptr).code != heif_error_Ok)
        return false;
    heif_image_handle *handle = nullptr;
    const heif_error error = heif_context_get_primary_image_handle(m_context.get(), &handle);
    m_handle.reset(handle);
    return error.code == heif_error_Ok && m_handle && !size().isEmpty();
}

QSize Reader::size() const
{
    return {heif_image_handle_get_width(m_handle.get()), heif_image_handle_get_height(m_handle.get())};
}

QImage::Format Reader::format() const
{
    const bool alpha = heif_image_handle_has_alpha_channel(m_handle.get());
    const bool premultiplied = alpha && heif_image_handle_is_premultiplied_alpha(m_handle.get());
    if (heif_image_handle_get_luma_bits_per_pixel(m_handle.get()) > 8)
        return premultiplied ? QImage::Format_RGBA64_Premultiplied
               : alpha       ? QImage::Format_RGBA64
                             : QImage::Format_RGBX64;
    return premultiplied ? QImage::Format_ARGB32_Premultiplied
           : alpha       ? QImage::Format_ARGB32
                         : QImage::Format_RGB32;
}

bool Reader::read(QImage &out)
{
    // Before the decoder takes memory for it: is there room for the result?
    if (!QImageIOHandler::allocateImage(size(), format(), &out))
        return false;
    const bool alpha = heif_image_handle_has_alpha_channel(m_handle.get());
    const bool deep = out.depth() > 32;
    const heif_chroma chroma =
        deep    ? alpha ? heif_chroma_interleaved_RRGGBBAA_LE : heif_chroma_interleaved_RRGGBB_LE
        : alpha ? heif_chroma_interleaved_RGBA
                : heif_chroma_interleaved_RGB;
    heif_image *image = nullptr;
    const heif_error error = heif_decode_image(m_handle.get(), &image, heif_colorspace_RGB, chroma, nullptr);
    const Image decoded(image);
    if (error.code != heif_error_Ok || !decoded || !copyPixels(decoded.get(), out))
        return false;
    if (const QColorSpace space = colorSpaceOf(m_handle.get()); space.isValid())
        out.setColorSpace(space);
    return true;
}

bool Reader::copyPixels(const heif_image *decoded, QImage &out) const
{
    int stride = 0;
    const uint8_t *pixels = heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const QSize real(heif_image_get_primary_width(decoded), heif_image_get_primary_height(decoded));
    const int depth = heif_image_get_bits_per_pixel_range(decoded, heif_channel_interleaved);
    const bool deep = out.depth() > 32;
    if (!pixels || real.isEmpty() || (deep ? depth < 9 || depth > 16 : depth != 8))
        return false;
    // The coded picture has the last word about its size.
    if (out.size() != real && !QImageIOHandler::allocateImage(real, out.format(), &out))
        return false;
    const bool alpha = heif_image_handle_has_alpha_channel(m_handle.get());
    for (int y = 0; y < real.height(); ++y) {
        const uchar *from = pixels + qsizetype(y) * stride;
        if (deep)
            copyRow16(from, reinterpret_cast<quint16 *>(out.scanLine(y)), real.width(), alpha, depth);
        else
            copyRow8(from, reinterpret_cast<QRgb *>(out.scanLine(y)), real.width(), alpha);
    }
    return true;
}

} // namespace heif
