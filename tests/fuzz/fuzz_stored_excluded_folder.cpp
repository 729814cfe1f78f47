// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"
#include "tests/fuzz/FuzzText.h"

using tests::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString stored = tests::fuzzText(data, size);
    const std::optional<core::ExcludedFolder> folder = core::parseStoredExcludedFolder(stored);
    if (!folder) {
        require(stored.indexOf(u';') < 0 || stored.indexOf(u';') == stored.size() - 1, "no path is refused");
        return 0;
    }
    require(!folder->path.isEmpty(), "an empty path would leave out everything");
    require(stored.endsWith(QLatin1Char(';') + folder->path), "the path is what follows the first separator");
    require(core::parseStoredExcludedFolder(folder->storedText()) == folder, "what was read is read again");
    return 0;
}
