// SPDX-License-Identifier: GPL-3.0-or-later

// A .reg file is chosen by the user and may hold anything: what is taken from it concerns the traces' own
// keys only, and comes out the same when it is written and read again.

#include "TrackCleaner/engine/RegFile.h"
#include "tests/fuzz/FuzzText.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // Behind what every such file begins with, to which the fuzzer would not find its way.
    const QString text = QStringLiteral("Windows Registry Editor Version 5.00\r\n[HKEY_CURRENT_USER\\") +
                         tracks::keySource(tracks::Item::RecentFiles)->path() +
                         QStringLiteral("]\r\n\"a\"=") + tests::fuzzText(data, size);
    const QByteArray bytes(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    const tracks::RegFileContent content = tracks::parseRegFile("\xFF\xFE" + bytes);
    for (const tracks::RegistryKey &key : content.keys) {
        if (!tracks::isTraceKey(key.path))
            std::abort();
    }
    if (content.keys.empty())
        return 0;
    const tracks::RegFileContent again = tracks::parseRegFile(tracks::regFile(content.keys));
    if (again.fault != tracks::RegFileFault::None || again.keys.size() != content.keys.size())
        std::abort();
    for (std::size_t i = 0; i < again.keys.size(); ++i) {
        if (again.keys[i].path != content.keys[i].path || again.keys[i].values != content.keys[i].values)
            std::abort();
    }
    return 0;
}
