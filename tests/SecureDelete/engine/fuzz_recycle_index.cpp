// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/RecycleIndex.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Any bytes end as nothing, or as a path of a list's line that the bytes could hold.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const std::optional<securedelete::RemovedItem> item = securedelete::parseRecycleIndex(bytes);
    if (!item)
        return 0;
    const QString &path = item->originalPath;
    if (path.isEmpty() || path.size() * 2 > bytes.size() || path.contains(u'\n') || path.contains(QChar(0)))
        std::abort();
    return 0;
}
