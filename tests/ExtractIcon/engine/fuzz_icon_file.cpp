// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/BitmapDecoder.h"
#include "ExtractIcon/engine/IconListing.h"
#include "tests/fuzz/FuzzText.h"

using namespace icons;
using tests::require;

// The bytes as an icon file, as the directory of a group, and as one bitmap.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const std::optional<DecodedBitmap> bitmap = decodeBitmap(bytes))
        require(!bitmap->image.isNull(), "a decoded bitmap is a picture");
    if (const std::optional<IconDirectory> group = parseGroup(bytes))
        require(group->entries.size() * groupEntryBytes < bytes.size(), "entries are not made up");

    core::CancelFlag cancel;
    IconFileSource source(bytes);
    for (const IconRecord &record : listIcons(source, cancel)) {
        const QImage small = thumbnail(source, record, 48);
        require(small.width() <= 48 && small.height() <= 48, "thumbnails are small");
        const std::optional<StoredIcon> icon = readIcon(source, record.id);
        require(icon.has_value(), "what is listed can be read");
        decodeIcon(*icon);
        const QByteArray written = iconFile(icon->directory, icon->bytes);
        IconFileSource again(written);
        const std::optional<StoredIcon> second = readIcon(again, record.id);
        require(second && second->bytes == icon->bytes, "what was written is read again");
    }
    return 0;
}
