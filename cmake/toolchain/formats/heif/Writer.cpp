// SPDX-License-Identifier: GPL-3.0-or-later
#include "Handler.h"

#include <QColorSpace>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace heif
{

namespace
{

// Where neither codec shows what it left out: about 41 dB on photographs, at much the same size.
constexpr int defaultQualityAv1 = 75;
constexpr int defaultQualityHevc = 50;
constexpr int lossless = 100;
constexpr int fullColour = 90; // above it, colour keeps the resolution of brightness

struct EncoderRelease {
    void operator()(heif_encoder *encoder) const { heif_encoder_release(encoder); }
};
using Encoder = std::unique_ptr<heif_encoder, EncoderRelease>;

struct OptionsFree {
    void operator()(heif_encoding_options *options) const { heif_encoding_options_free(options); }
};

struct NclxFree {
    void operator()(heif_color_profile_nclx *nclx) const { heif_nclx_color_profile_free(nclx); }
};

heif_error writeBytes(heif_context *, const void *data, size_t size, void *device)
{
    const auto length = static_cast<qint64>(size);
    if (static_cast<QIODevice *>(device)->write(static_cast<const char *>(data), length) == length)
        return {heif_error_Ok, heif_suberror_Unspecified, "written"};
    return {heif_error_Encoding_error, heif_suberror_Cannot_write_output_data,
            "the device took less than given"};
}

// HEVC's encoder is built for eight bits a channel.
bool isDeep(const QImage &image, bool av1)
{
    const bool thirtyBit = image.format() == QImage::Format_RGB30 || image.format() == QImage::Format_BGR30 ||
                           image.format() == QImage::Format_A2RGB30_Premultiplied ||
                           image.format() == QImage::Format_A2BGR30_Premultiplied;
    return av1 && (thirtyBit || image.depth() > 32 || image.format() == QImage::Format_Grayscale16);
}

// As RGB of 8 or 16 bits a channel. A colour space that is not of that kind, or that no profile can say, is
// left.
QImage prepared(const QImage &image, bool deep)
{
    const bool alpha = image.hasAlphaChannel();
    const QImage::Format format = deep    ? alpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64
                                  : alpha ? QImage::Format_RGBA8888
                                          : QImage::Format_RGB888;
    const QColorSpace space = image.colorSpace();
    if (space.isValid() &&
        (space.colorModel() != QColorSpace::ColorModel::Rgb || space.iccProfile().isEmpty()))
        return image.convertedToColorSpace(QColorSpace(QColorSpace::SRgb), format);
    return image.convertToFormat(format);
}

void copyPixels(const QImage &from, uchar *to, int stride, bool alpha)
{
    const bool deep = from.depth() > 32;
    const int channels = alpha ? 4 : 3;
    for (int y = 0; y < from.height(); ++y, to += stride) {
        if (!deep) {
            std::copy_n(from.constScanLine(y), qsizetype(from.width()) * channels, to);
            continue;
        }
        const auto *pixel = reinterpret_cast<const quint16 *>(from.constScanLine(y));
        uchar *out = to;
        for (int x = 0; x < from.width(); ++x, pixel += 4) {
            for (int channel = 0; channel < channels; ++channel, out += 2)
                qToLittleEndian(quint16((pixel[channel] * 1023u + 32767u) / 65535u), out);
        }
    }
}

Image toHeif(const QImage &image)
{
    const bool deep = image.depth() > 32;
    const bool alpha = image.hasAlphaChannel();
    const heif_chroma chroma =
        deep    ? alpha ? heif_chroma_interleaved_RRGGBBAA_LE : heif_chroma_interleaved_RRGGBB_LE
        : alpha ? heif_chroma_interleaved_RGBA
                : heif_chroma_interleaved_RGB;
    heif_image *created = nullptr;
    if (heif_image_create(image.width(), image.height(), heif_colorspace_RGB, chroma, &created).code !=
        heif_error_Ok)
        return {};
    Image out(created);
    if (heif_image_add_plane(created, heif_channel_interleaved, image.width(), image.height(), deep ? 10 : 8)
            .code != heif_error_Ok)
        return {};
    int stride = 0;
    uint8_t *plane = heif_image_get_plane(created, heif_channel_interleaved, &stride);
    copyPixels(image, plane, stride, alpha);
    const QColorSpace space = image.colorSpace();
    if (space.isValid() && space != QColorSpace(QColorSpace::SRgb)) {
        const QByteArray profile = space.iccProfile();
        heif_image_set_raw_color_profile(created, "prof", profile.constData(),
                                         static_cast<size_t>(profile.size()));
    }
    return out;
}

void configure(heif_encoder *encoder, bool av1, int quality)
{
    heif_encoder_set_lossy_quality(encoder, quality);
    if (quality == lossless)
        heif_encoder_set_lossless(encoder, true);
    heif_encoder_set_parameter_string(encoder, "chroma", quality > fullColour ? "444" : "420");
    // The slower settings take several times as long for a tenth of the size.
    if (av1)
        heif_encoder_set_parameter_integer(encoder, "speed", 7);
    else
        heif_encoder_set_parameter_string(encoder, "preset", "fast");
}

// The numbers of both are those of EXIF.
heif_orientation orientationOf(QImageIOHandler::Transformations transformation)
{
    switch (transformation) {
    case QImageIOHandler::TransformationMirror:
        return heif_orientation_flip_horizontally;
    case QImageIOHandler::TransformationRotate180:
        return heif_orientation_rotate_180;
    case QImageIOHandler::TransformationFlip:
        return heif_orientation_flip_vertically;
    case QImageIOHandler::TransformationFlipAndRotate90:
        return heif_orientation_rotate_90_cw_then_flip_horizontally;
    case QImageIOHandler::TransformationRotate90:
        return heif_orientation_rotate_90_cw;
    case QImageIOHandler::TransformationMirrorAndRotate90:
        return heif_orientation_rotate_90_cw_then_flip_vertically;
    case QImageIOHandler::TransformationRotate270:
        return heif_orientation_rotate_270_cw;
    default:
        return heif_orientation_normal;
    }
}

bool encode(heif_context *context, const QImage &image, heif_encoder *encoder, const WriteOptions &wanted)
{
    const Image pixels = toHeif(image);
    const std::unique_ptr<heif_encoding_options, OptionsFree> options(heif_encoding_options_alloc());
    const std::unique_ptr<heif_color_profile_nclx, NclxFree> nclx(heif_nclx_color_profile_alloc());
    if (!pixels || !options || !nclx)
        return false;
    nclx->color_primaries = heif_color_primaries_ITU_R_BT_709_5;
    nclx->transfer_characteristics = heif_transfer_characteristic_IEC_61966_2_1;
    // Red, green and blue as they are: every change to brightness and colour difference rounds.
    nclx->matrix_coefficients = wanted.quality == lossless ? heif_matrix_coefficients_RGB_GBR
                                                           : heif_matrix_coefficients_ITU_R_BT_601_6;
    nclx->full_range_flag = 1;
    options->save_alpha_channel = image.hasAlphaChannel();
    options->output_nclx_profile = nclx.get();
    options->image_orientation = orientationOf(wanted.transformation);
    return heif_context_encode_image(context, pixels.get(), encoder, options.get(), nullptr).code ==
           heif_error_Ok;
}

} // namespace

bool write(QIODevice &device, const QImage &image, const WriteOptions &options)
{
    WriteOptions wanted = options;
    if (wanted.quality < 0)
        wanted.quality = wanted.av1 ? defaultQualityAv1 : defaultQualityHevc;
    wanted.quality = std::min(wanted.quality, lossless);
    const QImage source = image.isNull() ? QImage() : prepared(image, isDeep(image, wanted.av1));
    const Context context(heif_context_alloc());
    if (source.isNull() || !context)
        return false;
    heif_encoder *created = nullptr;
    const heif_compression_format codec = wanted.av1 ? heif_compression_AV1 : heif_compression_HEVC;
    if (heif_context_get_encoder_for_format(context.get(), codec, &created).code != heif_error_Ok)
        return false;
    const Encoder encoder(created);
    configure(created, wanted.av1, wanted.quality);
    if (!encode(context.get(), source, created, wanted))
        return false;
    heif_writer writer = {1, writeBytes};
    return heif_context_write(context.get(), &writer, &device).code == heif_error_Ok;
}

} // namespace heif
