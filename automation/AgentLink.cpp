// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/AgentLink.h"

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
    // Posting to no window would post to this thread.
    const WId agent = agentWindow();
    return agent != 0 && platform::postToWindow(agent, message, wParam);
}

void applyToAgent(bool featureOn)
{
    if (featureOn && !agentRuns())
        startAgent();
    else if (featureOn || settings::backgroundFeaturesEnabled())
        postToAgent(platform::messageReloadSettings);
    else
        postToAgent(messageClose);
}

} // namespace automation
