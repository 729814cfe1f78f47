// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "companions/Glasswick/Feature.h"

namespace agent
{

// The suite's icon in the notification area, with a quick menu. The agent is the only one that shows it, and
// there is one agent.
class TrayIcon final : public Feature
{
public:
    explicit TrayIcon(const Surroundings &surroundings);
    ~TrayIcon() override;

    void reload() override;
    void take(const automation::Event &event) override;
    bool handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void show();
    void hide();
    void openMenu(int x, int y);
    void carryOut(UINT command);
    // Brings the application to the front, started if need be, with the page of a module; -1: as it is.
    void openSuite(int module);
    void log(const QString &subject, const QString &text) const;

    Surroundings m_surroundings;
    bool m_shown = false;
    int m_waitingModule = -1; // to be opened when the application is there
    int m_tries = 0;
};

} // namespace agent
