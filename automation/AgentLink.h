// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"

// How the forms of the background features control the background agent. Interface thread.
namespace automation
{

bool agentRuns();

// Call after storing a feature's settings: starts the agent, makes it reload, or ends it if no feature is on
// any more.
void applyToAgent(bool featureOn);

// Starts the agent, hidden. Does nothing if it is not installed.
void startAgent();

// Posts a message to the agent; false if it is not running.
bool postToAgent(unsigned message, unsigned wParam = 0);

// Whether the agent could not register this shortcut, because Windows or another program uses the
// combination. `on`: whether a running agent is supposed to hold the shortcuts; then do not call this right
// after the agent was told to reload them.
bool isKeyTaken(const ShortcutCommand &command, bool on);

} // namespace automation
