// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"

// The background agent as the forms of the background features see it. Interface thread.
namespace automation
{

bool agentRuns();

// After the settings of a feature were stored: starts the agent, tells it to reload, or ends it when the
// feature is off and no other is on.
void applyToAgent(bool featureOn);

// Starts the agent, hidden. Silent when it is not installed.
void startAgent();

// Puts a message into the agent's queue; false when it does not run.
bool postToAgent(unsigned message, unsigned wParam = 0);

// Whether Windows would not give the agent the combination of this shortcut, since Windows itself or another
// program has it. `on`: whether the agent, where it runs, is to hold the shortcuts; then it is not to be
// asked within the moment in which it reloads them.
bool isKeyTaken(const ShortcutCommand &command, bool on);

} // namespace automation
