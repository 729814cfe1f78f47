// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/Settings.h"

#include <algorithm>

namespace securedelete
{

Settings Settings::load()
{
    return {static_cast<Method>(deleteModeValue.read()),
            std::clamp(numPassesValue.read(), 1, maxRandomPasses)};
}

bool Settings::save() const
{
    return deleteModeValue.write(static_cast<int>(method)) && numPassesValue.write(randomPasses);
}

} // namespace securedelete
