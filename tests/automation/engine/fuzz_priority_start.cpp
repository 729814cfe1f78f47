// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/PriorityStart.h"
#include "tests/fuzz/FuzzText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = tests::fuzzText(data, size);
    automation::nameProblem(text);
    automation::proposedName(text, text, automation::Priority::High);
    if (const auto start = automation::parseStart(automation::argumentsOf(text))) {
        const QString stored = automation::startText(*start);
        tests::require(stored == automation::argumentsOf(text), "there is one way to write a start");
        tests::require(automation::isStartable(start->program), "only programs are started");
    }
    return 0;
}
