// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into the TIFF plugin in front of libtiff. The plugin compresses pixels as they are; the difference
// of neighbours takes half the bytes in a photograph, in the same time.
#include <tiffio.h>

#include <vector>

namespace
{

// Indexes into a colour table are no brightness, and real numbers have a predictor of their own, which few
// programs know.
bool hasSmoothSamples(TIFF *file)
{
    uint16_t bits = 0;
    uint16_t photometric = 0;
    uint16_t sample = 0;
    TIFFGetFieldDefaulted(file, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(file, TIFFTAG_PHOTOMETRIC, &photometric);
    TIFFGetFieldDefaulted(file, TIFFTAG_SAMPLEFORMAT, &sample);
    return (bits == 8 || bits == 16) && photometric != PHOTOMETRIC_PALETTE && sample == SAMPLEFORMAT_UINT;
}

} // namespace

extern "C" int __real_TIFFWriteScanline(TIFF *file, void *row, uint32_t number, uint16_t plane);

extern "C" int __wrap_TIFFWriteScanline(TIFF *file, void *row, uint32_t number, uint16_t plane)
{
    uint16_t compression = COMPRESSION_NONE;
    if (!TIFFGetField(file, TIFFTAG_COMPRESSION, &compression) || compression != COMPRESSION_LZW ||
        !hasSmoothSamples(file))
        return __real_TIFFWriteScanline(file, row, number, plane);
    if (number == 0)
        TIFFSetField(file, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    // The differences are made in place, and some of the plugin's rows are those of the picture itself.
    const auto *bytes = static_cast<const uint8_t *>(row);
    std::vector<uint8_t> copy(bytes, bytes + TIFFScanlineSize(file));
    return __real_TIFFWriteScanline(file, copy.data(), number, plane);
}
