// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImageIOHandler>

#include <libheif/heif.h>

#include <memory>

// The pictures of the HEIF container for QImageReader and QImageWriter, over libheif: HEVC (HEIC, HEIF) and
// AV1 (AVIF). One picture a file: the primary one, upright as the container says. A handler belongs to one
// thread.
namespace heif
{

struct ContextFree {
    void operator()(heif_context *context) const { heif_context_free(context); }
};
using Context = std::unique_ptr<heif_context, ContextFree>;

struct HandleRelease {
    void operator()(const heif_image_handle *handle) const { heif_image_handle_release(handle); }
};
using ImageHandle = std::unique_ptr<heif_image_handle, HandleRelease>;

struct ImageRelease {
    void operator()(const heif_image *image) const { heif_image_release(image); }
};
using Image = std::unique_ptr<heif_image, ImageRelease>;

// An opened file: the header is read, no pixel decoded. The device must live longer and is read by it.
class Reader
{
public:
    // Null when the device holds no picture that can be read. Seeks the device.
    static std::unique_ptr<Reader> open(QIODevice &device);

    QSize size() const;
    QImage::Format format() const; // 32 bits a pixel, or 64 when the file has more than 8 a channel
    bool read(QImage &out);        // false: too large for QImageReader's limit, or damaged

private:
    Reader() = default;
    bool openContext();
    bool copyPixels(const heif_image *decoded, QImage &out) const;

    heif_reader m_callbacks = {};
    QIODevice *m_device = nullptr;
    Context m_context;
    ImageHandle m_handle;
};

// The colour space that the file states, by an ICC profile or by numbers; invalid when it states none that Qt
// knows.
QColorSpace colorSpaceOf(const heif_image_handle *handle);

struct WriteOptions {
    bool av1 = false; // else HEVC. AV1 keeps ten bits a channel of deeper pictures, HEVC eight
    int quality = -1; // 0 to 100, of which 100 keeps every bit; below 0 the default
    QImageIOHandler::Transformations transformation =
        QImageIOHandler::TransformationNone; // written for viewers to do
};
bool write(QIODevice &device, const QImage &image, const WriteOptions &options);

class Handler : public QImageIOHandler
{
public:
    bool canRead() const override;
    bool read(QImage *image) override;
    bool write(const QImage &image) override;
    bool supportsOption(ImageOption option) const override;
    QVariant option(ImageOption option) const override;
    void setOption(ImageOption option, const QVariant &value) override;

private:
    Reader *reader() const;

    mutable std::unique_ptr<Reader> m_reader;
    mutable bool m_failed = false;
    bool m_finished = false;
    WriteOptions m_writeOptions;
};

// Prepares libheif once for the process: its codecs, and in front of its decoders the guards that refuse a
// picture whose coded size is above QImageReader's limit, whatever the container says.
void initialize();

} // namespace heif
