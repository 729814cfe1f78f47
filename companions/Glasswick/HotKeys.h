// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"
#include "companions/Glasswick/Countdown.h"
#include "companions/Glasswick/Feature.h"
#include "companions/Glasswick/PlainPaste.h"
#include "platform/HotKey.h"

#include <vector>

namespace agent
{

// The user's keyboard shortcuts: registers them while the feature is on, and executes them.
class HotKeys final : public Feature
{
public:
    explicit HotKeys(const Surroundings &surroundings);
    ~HotKeys() override;

    void reload() override;
    bool handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Registered {
        automation::ShortcutCommand command;
        platform::HotKey keys;
    };

    WId window() const { return reinterpret_cast<WId>(m_surroundings.window); }
    void registerAll();
    void unregisterAll();
    void perform(const automation::ShortcutCommand &command);
    void log(const QString &subject, const QString &text) const;

    Surroundings m_surroundings;
    // Indexed by hot key id; entries that could not be registered are empty.
    std::vector<Registered> m_registered;
    PlainPaste m_paste;
    Countdown m_countdown;
};

} // namespace agent
