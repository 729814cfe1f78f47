// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Event.h"

#include <memory>
#include <windows.h>

namespace agent
{

class Log;

// Private message of the agent's window: an object that a feature waits for is signalled. wParam says which.
inline constexpr UINT messageWaitEnded = WM_APP + 1;
enum WaitedFor : WPARAM { waitedProgram, waitedWallpaper };

// What the agent provides to a feature.
struct Surroundings {
    HWND window; // the agent's hidden window
    Log &log;
    UINT_PTR timer; // the feature's timer id; raises Due

    // Raises Due once after that time, replacing an earlier request; -1 cancels it.
    void wakeAfter(qint64 milliseconds) const;
};

// A background feature. Runs on the agent's only thread. The destructor undoes its effects.
class Feature
{
public:
    virtual ~Feature() = default;

    // The settings may have changed; also called once after construction.
    virtual void reload() = 0;
    // Handles an event; never called with Reload.
    virtual void take(const automation::Event &event) { Q_UNUSED(event) }
    // Handles other messages of the agent's window. Returns true if the message belongs to this feature.
    virtual bool handle(UINT message, WPARAM wParam, LPARAM lParam)
    {
        Q_UNUSED(message)
        Q_UNUSED(wParam)
        Q_UNUSED(lParam)
        return false;
    }
};

// A row of the agent's feature table.
struct FeatureRow {
    const char *name;
    std::unique_ptr<Feature> (*make)(const Surroundings &surroundings);
};

} // namespace agent
