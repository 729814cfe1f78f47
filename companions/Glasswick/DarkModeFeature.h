// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/DarkMode.h"
#include "companions/Glasswick/Feature.h"

namespace agent
{

// Switches Windows and apps between light and dark. The theme is kept when the agent ends, and the previous
// one is restored when the user switches the feature off.
class DarkModeFeature final : public Feature
{
public:
    explicit DarkModeFeature(const Surroundings &surroundings);
    ~DarkModeFeature() override;

    void reload() override;
    void take(const automation::Event &event) override;
    bool handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void decide(const automation::Event &event);
    void undo();

    Surroundings m_surroundings;
    automation::DarkMode m_rule;
    automation::DarkSettings m_settings;
};

} // namespace agent
