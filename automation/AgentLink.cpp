// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/AgentLink.h"

#include "platform/HotKey.h"
#include "platform/Shell.h"
#include "platform/TopLevelWindows.h"
#include "settings/Settings.h"

namespace automation
{

namespace
{

constexpr unsigned messageClose = 0x0010; // WM_CLOSE

WId agentWindow()
{
    return platform::findTopLevelWindow(QStringLiteral("GLASSWICK"), QStringLiteral("Transparent Taskbar"));
}

} // namespace

bool agentRuns()
{
    return agentWindow() != 0;
}

void startAgent()
{
    platform::shell().startAgent(settings::installationFolder() + QStringLiteral("\\Glasswick.exe"), true);
}

bool postToAgent(unsigned message, unsigned wParam)
{
    // PostMessageW() with a null window would post to this thread.
    const WId agent = agentWindow();
    return agent != 0 && platform::postToWindow(agent, message, wParam);
}

void applyToAgent(bool featureOn)
{
    if (featureOn && !agentRuns())
        startAgent();
    else if (featureOn || settings::isAgentNeeded())
        postToAgent(platform::messageReloadSettings);
    else
        postToAgent(messageClose);
}

bool isKeyTaken(const ShortcutCommand &command, bool on)
{
    if (command.key.size() != 1)
        return false;
    const platform::HotKey keys =
        platform::hotKeyOf(command.key[0], command.uses(Modifier::Ctrl), command.uses(Modifier::Shift),
                           command.uses(Modifier::Windows));
    const WId agent = agentWindow();
    if (keys.key == 0 || platform::holdsHotKey(agent, keys))
        return false;
    return (agent && on) || !platform::hotKeyIsFree(keys);
}

} // namespace automation
