// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"
#include "tests/fuzz/FuzzText.h"

#include <algorithm>

using tests::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString stored = tests::fuzzText(data, size);
    const std::optional<core::FileTypeCategory> category = core::parseStoredFileType(stored);
    require(category.has_value() == (stored.indexOf(u';') >= 1), "a text with a flag is read, no other");
    if (!category)
        return 0;
    require(category->enabled != stored.startsWith(u"0;"), "only 0 disables");
    require(core::parseStoredFileType(category->storedText()) == category, "what was read is read again");

    const core::FileTypeMatcher matcher({*category});
    for (const QString &extension : category->extensions) {
        require(!extension.isEmpty(), "no empty extension");
        const QString name = QLatin1Char('f') + extension;
        const bool listed = name.contains(u'.') && core::completeExtension(name) != u"." &&
                            category->extensions.contains(core::completeExtension(name), Qt::CaseInsensitive);
        require(matcher.match(name).empty() == !(category->enabled && listed),
                "the matcher knows the extensions");
    }
    return 0;
}
