// SPDX-License-Identifier: GPL-3.0-or-later
#include "Handler.h"

#include <QImageReader>
#include <QtEndian>

#include <aom/aom_decoder.h>
#include <aom/aomdx.h>
#include <libheif/heif_plugin.h>

#include <span>
#include <vector>

// The decoders inside libheif, which it does not declare.
const heif_decoder_plugin *get_decoder_plugin_libde265();
const heif_decoder_plugin *get_decoder_plugin_aom();

namespace heif
{

namespace
{

using Bytes = std::span<const uint8_t>;

bool fits(quint64 width, quint64 height)
{
    const auto limit = static_cast<quint64>(QImageReader::allocationLimit()) << 20;
    if (limit == 0 || width * height <= limit / sizeof(QRgb))
        return true;
    qWarning("Coded picture of %llu x %llu pixels is above the allocation limit, whatever its file claims",
             width, height);
    return false;
}

heif_error refusal()
{
    return {heif_error_Memory_allocation_error, heif_suberror_Security_limit_exceeded,
            "the coded picture is too large"};
}

// Bits from the left, with the exponential codes of HEVC headers. Behind the end come zeroes, and `good`
// tells.
class BitReader
{
public:
    explicit BitReader(std::vector<uint8_t> bytes) : m_bytes(std::move(bytes)) {}

    quint32 bits(int count)
    {
        quint32 value = 0;
        for (; count > 0; --count, ++m_at)
            value = value << 1 | (good() ? (m_bytes[m_at / 8] >> (7 - m_at % 8)) & 1u : 0u);
        return value;
    }

    quint32 exponential()
    {
        int zeroes = 0;
        while (zeroes < 32 && good() && bits(1) == 0)
            ++zeroes;
        return zeroes < 32 ? (1u << zeroes) - 1 + bits(zeroes) : 0;
    }

    void skip(size_t count) { m_at += count; }
    bool good() const { return m_at < m_bytes.size() * 8; }

private:
    std::vector<uint8_t> m_bytes;
    size_t m_at = 0;
};

// The third byte of every 0, 0, 3 is there only to keep start codes apart.
std::vector<uint8_t> withoutEmulationPrevention(Bytes bytes)
{
    std::vector<uint8_t> out;
    out.reserve(bytes.size());
    int zeroes = 0;
    for (const uint8_t byte : bytes) {
        if (zeroes >= 2 && byte == 3) {
            zeroes = 0;
            continue;
        }
        zeroes = byte == 0 ? zeroes + 1 : 0;
        out.push_back(byte);
    }
    return out;
}

// A sequence parameter set behind its two bytes of header: what stands before the picture's size is skipped
// (ITU-T H.265, 7.3.2.2 and 7.3.3).
bool sequenceFits(Bytes parameterSet)
{
    constexpr size_t profileBits = 88;
    constexpr size_t levelBits = 8;
    BitReader in(withoutEmulationPrevention(parameterSet));
    in.skip(4);
    const quint32 lowerLayers = in.bits(3);
    in.skip(1 + profileBits + levelBits);
    size_t layerBits = 0;
    for (quint32 layer = 0; layer < lowerLayers; ++layer)
        layerBits += (in.bits(1) ? profileBits : 0) + (in.bits(1) ? levelBits : 0);
    if (lowerLayers > 0)
        in.skip(2 * size_t(8 - lowerLayers));
    in.skip(layerBits);
    in.exponential();
    constexpr quint32 fullChroma = 3;
    if (in.exponential() == fullChroma)
        in.skip(1);
    const quint32 width = in.exponential();
    const quint32 height = in.exponential();
    return in.good() && fits(width, height);
}

// HEVC comes as units of four bytes of length and the unit; one cut off is left to the decoder, which refuses
// it.
bool hevcFits(Bytes data)
{
    constexpr size_t lengthBytes = 4;
    constexpr size_t headerBytes = 2;
    constexpr uint8_t sequenceParameterSet = 33;
    while (data.size() > lengthBytes) {
        const quint32 length = qFromBigEndian<quint32>(data.data());
        data = data.subspan(lengthBytes);
        if (length > data.size())
            return true;
        const Bytes unit = data.first(length);
        if (length > headerBytes && (unit[0] >> 1 & 0x3f) == sequenceParameterSet &&
            !sequenceFits(unit.subspan(headerBytes)))
            return false;
        data = data.subspan(length);
    }
    return true;
}

// AV1 comes as units whose header says type and, mostly, length (AV1 bitstream format, 5.3).
bool av1Fits(Bytes data)
{
    constexpr uint8_t sequenceHeader = 1;
    while (data.size() >= 2) {
        const Bytes unit = data;
        const uint8_t type = data[0] >> 3 & 0xf;
        const bool extended = data[0] & 4;
        const bool sized = data[0] & 2;
        data = data.subspan(extended ? 2 : 1);
        size_t length = sized ? 0 : data.size();
        for (int shift = 0; sized && !data.empty() && shift < 56; shift += 7) {
            const uint8_t byte = data[0];
            data = data.subspan(1);
            length |= size_t(byte & 0x7f) << shift;
            if (!(byte & 0x80))
                break;
        }
        aom_codec_stream_info_t info = {};
        if (type == sequenceHeader &&
            aom_codec_peek_stream_info(aom_codec_av1_dx(), unit.data(), unit.size(), &info) == AOM_CODEC_OK &&
            !fits(info.w, info.h))
            return false;
        if (length > data.size())
            return true;
        data = data.subspan(length);
    }
    return true;
}

heif_error pushHevc(void *decoder, const void *data, size_t size)
{
    if (!hevcFits({static_cast<const uint8_t *>(data), size}))
        return refusal();
    return get_decoder_plugin_libde265()->push_data(decoder, data, size);
}

heif_error pushAv1(void *decoder, const void *data, size_t size)
{
    if (!av1Fits({static_cast<const uint8_t *>(data), size}))
        return refusal();
    return get_decoder_plugin_aom()->push_data(decoder, data, size);
}

// Above any priority that libheif gives.
constexpr int first = 10000;

void guard(heif_decoder_plugin &guarded, const heif_decoder_plugin &original,
           heif_error (*push)(void *, const void *, size_t), int (*priority)(heif_compression_format))
{
    guarded = original;
    guarded.push_data = push;
    guarded.does_support_format = priority;
    heif_register_decoder_plugin(&guarded);
}

} // namespace

void initialize()
{
    [[maybe_unused]] static const bool once = [] {
        static heif_decoder_plugin hevc;
        static heif_decoder_plugin av1;
        heif_init(nullptr);
        guard(hevc, *get_decoder_plugin_libde265(), pushHevc,
              [](heif_compression_format format) { return format == heif_compression_HEVC ? first : 0; });
        guard(av1, *get_decoder_plugin_aom(), pushAv1,
              [](heif_compression_format format) { return format == heif_compression_AV1 ? first : 0; });
        return true;
    }();
}

} // namespace heif
