// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <memory>
#include <windows.h>

namespace agent
{

class Log;

// Within the agent's own window: something that a feature waits for has ended. wParam: which.
inline constexpr UINT messageWaitEnded = WM_APP + 1;
enum WaitedFor : WPARAM { waitedProgram, waitedWallpaper };

// What one feature needs of the agent.
struct Surroundings {
    HWND window; // the agent's hidden window
    Log &log;
    UINT_PTR timer; // the feature's own, which makes a Due event

    // A Due event once, in so many milliseconds, instead of the one asked for before; -1: none.
    void wakeAfter(qint64 milliseconds) const;
};

// Something that the agent does in the background. Lives on the agent's one thread. Its destructor undoes
// what it did.
class Feature
{
public:
    virtual ~Feature() = default;

    // The settings may have changed; also called once after it was made.
    virtual void reload() = 0;
    // What happened; Reload does not come this way.
    virtual void take(const automation::Event &event) { Q_UNUSED(event) }
    // A message of the agent's window that is no event. True when it was this feature's.
    virtual bool handle(UINT message, WPARAM wParam, LPARAM lParam)
    {
        Q_UNUSED(message)
        Q_UNUSED(wParam)
        Q_UNUSED(lParam)
        return false;
    }
};

// A row of the agent's table.
struct FeatureRow {
    const char *name;
    std::unique_ptr<Feature> (*make)(const Surroundings &surroundings);
};

} // namespace agent
