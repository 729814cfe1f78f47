// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Taskbar.h"
#include "companions/Glasswick/Feature.h"

namespace agent
{

// Makes the taskbars of all monitors transparent with an undocumented call that Windows itself uses. Nothing
// is injected into Explorer.
class TaskbarFeature final : public Feature
{
public:
    explicit TaskbarFeature(const Surroundings &surroundings);
    ~TaskbarFeature() override;

    void reload() override;
    void take(const automation::Event &event) override;

private:
    QString apply();
    void restore();

    Surroundings m_surroundings;
    automation::Taskbar m_rule;
    automation::TaskbarSettings m_settings;
    QString m_refused;
};

} // namespace agent
