// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/StayAwake.h"
#include "companions/Glasswick/Countdown.h"
#include "companions/Glasswick/Feature.h"
#include "platform/WaitHandle.h"

#include <array>

namespace agent
{

// Keeps the PC awake as configured, and notifies the main window's page of changes.
class StayAwakeFeature final : public Feature
{
public:
    explicit StayAwakeFeature(const Surroundings &surroundings);
    ~StayAwakeFeature() override;

    void reload() override;
    void take(const automation::Event &event) override;
    bool handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void decide(const automation::Event &event);
    void hold();
    void release();
    void watchPower();
    // Waits for the named program to end; raises the event at once if it is not running.
    void watchProgram(const QString &name);
    void setScheme();
    void restoreScheme();
    void log(const QString &subject, const QString &text) const;

    Surroundings m_surroundings;
    automation::StayAwake m_rule;
    automation::AwakeSettings m_settings;
    bool m_awake = false;
    std::array<platform::PowerNotice, 3> m_power;
    platform::ObjectHandle m_program; // declared before the wait that uses it
    platform::WaitHandle m_wait;
    Countdown m_countdown;
};

} // namespace agent
