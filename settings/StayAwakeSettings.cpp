// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/StayAwakeSettings.h"

#include <array>

namespace settings
{

void takeOverWakeward()
{
    if (keyExists(keys::stayAwake) || !keyExists(keys::wakeward))
        return;
    constexpr std::array<QStringView, 8> names{
        u"duration",      u"durationUnit",         u"monitorOn",        u"powerSchemeOn",
        u"simulatePress", u"simulatePressTimeOut", u"powerSchemeIndex", u"shutdownWindows"};
    for (const QStringView name : names) {
        quint32 value = 0;
        if (readDword(keys::wakeward, name, value))
            writeDword(keys::stayAwake, name, value);
    }
}

} // namespace settings
