// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"
#include "companions/Glasswick/Countdown.h"
#include "companions/Glasswick/Feature.h"
#include "companions/Glasswick/PlainPaste.h"

#include <vector>

namespace agent
{

// The keyboard shortcuts of the user: registered while the feature is on, carried out when they are pressed.
class HotKeys final : public Feature
{
public:
    explicit HotKeys(const Surroundings &surroundings);
    ~HotKeys() override;

    void reload() override;
    bool handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void registerAll();
    void unregisterAll();
    void perform(const automation::ShortcutCommand &command);
    void log(const QString &subject, const QString &text) const;

    Surroundings m_surroundings;
    // The number of a hot key is its index; those that could not be registered hold nothing.
    std::vector<automation::ShortcutCommand> m_registered;
    PlainPaste m_paste;
    Countdown m_countdown;
};

} // namespace agent
