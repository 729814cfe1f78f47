// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

// Keeping the PC awake: written by its form, read by the background agent.
namespace settings
{

inline constexpr Flag stayAwakeActive{keys::root, u"StayAwakeActive"};

// Duration in units of awakeDurationUnit; 0 for no limit. Ignored if a program is set.
inline constexpr Number awakeDuration{keys::stayAwake, u"duration", 0, 0, 1000};
inline constexpr Number awakeDurationUnit{keys::stayAwake, u"durationUnit", 0, 0, 1}; // minutes, hours
inline constexpr Text awakeProgram{keys::stayAwake, u"untilProgram"};                 // "setup.exe"
inline constexpr Flag awakeMonitorOn{keys::stayAwake, u"monitorOn", true};
inline constexpr Flag awakeSchemeOn{keys::stayAwake, u"powerSchemeOn"};
// Index in Windows' list of schemes, which changes when one is added: the name tells whether the index is
// still right.
inline constexpr Number awakeSchemeIndex{keys::stayAwake, u"powerSchemeIndex", 0, 0, 100};
inline constexpr Text awakeSchemeName{keys::stayAwake, u"powerSchemeName"};
inline constexpr Flag awakeNudge{keys::stayAwake, u"simulatePress"};
inline constexpr Number awakeNudgeSeconds{keys::stayAwake, u"simulatePressTimeOut", 60, 10, 3600};
inline constexpr Flag awakeShutDown{keys::stayAwake, u"shutdownWindows"};
inline constexpr Flag awakeWithLidClosed{keys::stayAwake, u"stayWithLidClosed"};
inline constexpr Flag awakeOnLowBattery{keys::stayAwake, u"stayOnLowBattery"};

// The agent's note of the end time, see AgentState.h. Removed by the form when the user switches it on again.
inline constexpr QStringView awakeEndNote = u"Stay awake ends";

// Copies the settings of the predecessor product, if only that one has stored any.
void takeOverWakeward();

} // namespace settings
