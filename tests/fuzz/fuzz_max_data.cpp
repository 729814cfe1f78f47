// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Scan.h"
#include "tests/fuzz/FuzzText.h"

using diskusage::LargestChildren;
using tests::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = tests::fuzzText(data, size);
    const std::vector<LargestChildren::Child> children = LargestChildren::parse(text);
    QString again;
    for (const LargestChildren::Child &child : children) {
        require(child.size >= 0, "sizes have no sign");
        require(!child.name.contains(u':'), "names have no colon");
        again += child.name + QStringLiteral(":%1:%2;").arg(child.size).arg(int(child.kind));
    }
    require(again.size() <= text.size(), "nothing is made up");
    require(LargestChildren::parse(again) == children, "what was read is read again");
    return 0;
}
