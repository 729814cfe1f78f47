// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/ShortcutCommand.h"
#include "tests/fuzz/FuzzText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = tests::fuzzText(data, size);
    automation::keyText(text);
    automation::actionText(text);
    automation::openableAddress(text);
    if (const auto command = automation::parseCommand(text)) {
        const QString stored = automation::commandText(*command);
        tests::require(automation::parseCommand(stored) == command, "what is written reads the same");
        tests::require(automation::sameKeys(text, stored), "and has the same keys");
    }
    return 0;
}
