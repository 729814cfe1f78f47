// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/TraceRegistry.h"

#include <QStringBuilder>

#include <utility>

namespace tracks
{

std::vector<RegistryKey> readKeys(TraceRegistry &registry, const QString &key, bool subkeys)
{
    constexpr int maxDepth = 4;
    std::vector<RegistryKey> keys;
    std::vector<std::pair<QString, int>> open{{key, 0}};
    while (!open.empty()) {
        const auto [path, depth] = open.back();
        open.pop_back();
        std::optional<RegistryKey> read = registry.read(path);
        if (!read)
            continue;
        if (subkeys && depth < maxDepth) {
            for (auto name = read->subkeys.rbegin(); name != read->subkeys.rend(); ++name)
                open.emplace_back(path % u'\\' % *name, depth + 1);
        }
        keys.push_back(std::move(*read));
    }
    return keys;
}

} // namespace tracks
