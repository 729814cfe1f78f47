// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <windows.h>

namespace agent
{

class Log;

// What one feature needs of the agent.
struct Surroundings {
    HWND window; // the agent's hidden window
    Log &log;
};

// Something that the agent does in the background. Lives on the agent's one thread. Its destructor undoes
// what it did.
class Feature
{
public:
    virtual ~Feature() = default;

    // The settings may have changed; also called once after it was made.
    virtual void reload() = 0;
    // A message of the agent's window. True when it was this feature's.
    virtual bool handle(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};

// A row of the agent's table.
struct FeatureRow {
    const char *name; // for the log
    std::unique_ptr<Feature> (*make)(const Surroundings &surroundings);
};

} // namespace agent
