// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "companions/Glasswick/Feature.h"

namespace agent
{

// The suite's icon in the notification area, with a quick menu. Only the agent shows it, and only one agent
// runs.
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
    // Brings the application to the front, starting it if necessary, and shows a module's page; -1 keeps the
    // current page.
    void openSuite(int module);
    void log(const QString &subject, const QString &text) const;

    Surroundings m_surroundings;
    bool m_shown = false;
    int m_waitingModule = -1; // opened once the application is running
    int m_tries = 0;
};

} // namespace agent
