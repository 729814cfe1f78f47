// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

// Keeping the PC awake: written by its form, read by the background agent.
namespace settings
{

inline constexpr Flag stayAwakeActive{keys::root, u"StayAwakeActive"};

// How long, in awakeDurationUnit; 0: until it is switched off. A program, when there is one, goes before it.
inline constexpr Number awakeDuration{keys::stayAwake, u"duration", 0, 0, 1000};
inline constexpr Number awakeDurationUnit{keys::stayAwake, u"durationUnit", 0, 0, 1}; // minutes, hours
inline constexpr Text awakeProgram{keys::stayAwake, u"untilProgram"};                 // "setup.exe"
inline constexpr Flag awakeMonitorOn{keys::stayAwake, u"monitorOn", true};
inline constexpr Flag awakeSchemeOn{keys::stayAwake, u"powerSchemeOn"};
// Into Windows' list of schemes, which changes when one is added: the name tells whether it is still meant.
inline constexpr Number awakeSchemeIndex{keys::stayAwake, u"powerSchemeIndex", 0, 0, 100};
inline constexpr Text awakeSchemeName{keys::stayAwake, u"powerSchemeName"};
inline constexpr Flag awakeNudge{keys::stayAwake, u"simulatePress"};
inline constexpr Number awakeNudgeSeconds{keys::stayAwake, u"simulatePressTimeOut", 60, 10, 3600};
inline constexpr Flag awakeShutDown{keys::stayAwake, u"shutdownWindows"};
inline constexpr Flag awakeWithLidClosed{keys::stayAwake, u"stayWithLidClosed"};
inline constexpr Flag awakeOnLowBattery{keys::stayAwake, u"stayOnLowBattery"};

// The agent's note of when it ends, see AgentState.h. Removed by the form when the user switches it on anew.
inline constexpr QStringView awakeEndNote = u"Stay awake ends";

// Copies the settings of the older product, when it alone has left any.
void takeOverWakeward();

} // namespace settings
