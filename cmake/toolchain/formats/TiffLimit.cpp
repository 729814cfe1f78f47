// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into the TIFF plugin in front of libtiff (see --wrap in CMakeLists.txt): a file is opened with an
// upper bound for what libtiff allocates, since a strip or a tile may claim any size. What libtiff has to say
// about damaged files is dropped; that the picture cannot be read is what the caller hears.
#include <QImageReader>

#include <tiffio.h>

#include <memory>

namespace
{

int silent(TIFF *, void *, const char *, const char *, va_list)
{
    return 1;
}

struct OptionsFree {
    void operator()(TIFFOpenOptions *options) const { TIFFOpenOptionsFree(options); }
};

} // namespace

extern "C" TIFF *__wrap_TIFFClientOpen(const char *name, const char *mode, thandle_t handle,
                                       TIFFReadWriteProc read, TIFFReadWriteProc write, TIFFSeekProc seek,
                                       TIFFCloseProc close, TIFFSizeProc size, TIFFMapFileProc map,
                                       TIFFUnmapFileProc unmap)
{
    const std::unique_ptr<TIFFOpenOptions, OptionsFree> options(TIFFOpenOptionsAlloc());
    const auto limit = static_cast<tmsize_t>(QImageReader::allocationLimit()) << 20;
    if (options && limit > 0) {
        TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), limit);
        TIFFOpenOptionsSetMaxCumulatedMemAlloc(options.get(), 2 * limit);
    }
    if (options) {
        TIFFOpenOptionsSetErrorHandlerExtR(options.get(), silent, nullptr);
        TIFFOpenOptionsSetWarningHandlerExtR(options.get(), silent, nullptr);
    }
    return TIFFClientOpenExt(name, mode, handle, read, write, seek, close, size, map, unmap, options.get());
}
