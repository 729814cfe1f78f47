// SPDX-License-Identifier: GPL-3.0-or-later

// Any registry text: what is read must be valid and be written as it was; all else must be refused.

#include "FindDuplicate/engine/CustomFileType.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    QString stored(static_cast<qsizetype>(size / sizeof(QChar)), Qt::Uninitialized);
    std::memcpy(stored.data(), data, static_cast<std::size_t>(stored.size()) * sizeof(QChar));
    const auto type = duplicates::parseStoredCustomFileType(stored);
    if (type && (!type->isValid() || type->storedText() != stored))
        std::abort();
    return 0;
}
