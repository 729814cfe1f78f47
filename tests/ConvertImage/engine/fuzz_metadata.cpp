// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/metadata/Metadata.h"
#include "ConvertImage/engine/metadata/XmpPacket.h"

#include <QBuffer>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Bytes as a picture file, and as EXIF: nothing is read beyond them, and what is adapted keeps its length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const conversion::Metadata found = conversion::readMetadata(file);
    for (const conversion::Metadata &metadata :
         {found, conversion::Metadata{bytes, {}}, conversion::Metadata{{}, bytes}}) {
        for (const bool keepPlace : {true, false}) {
            const auto adapted = conversion::adaptedMetadata(metadata, {640, 480}, keepPlace);
            if (!adapted.exif.isEmpty() && adapted.exif.size() != metadata.exif.size())
                std::abort();
        }
    }
    for (const auto target : {conversion::Target::Jpg, conversion::Target::Png, conversion::Target::Webp,
                              conversion::Target::Jxl, conversion::Target::Heic, conversion::Target::Tiff}) {
        conversion::withMetadata(bytes, target, {"II", "<x/>"});
        conversion::withMetadata(bytes, target, {bytes, {}});
    }
    conversion::mergedXmp(bytes, bytes);
    conversion::splitXmp(bytes, 2100);
    conversion::extensionDigest(bytes);
    return 0;
}
