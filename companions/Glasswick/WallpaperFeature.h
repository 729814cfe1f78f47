// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Wallpaper.h"
#include "companions/Glasswick/Feature.h"
#include "platform/WaitHandle.h"

namespace agent
{

// Has the wallpaper changed by a process of its own (companions/LarkspurWallpaper), which is started for each
// change and ends with it. The picture stays when the agent ends; what was there before comes back when the
// user switches the feature off.
class WallpaperFeature final : public Feature
{
public:
    explicit WallpaperFeature(const Surroundings &surroundings);
    ~WallpaperFeature() override;

    void reload() override;
    void take(const automation::Event &event) override;
    bool handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    automation::WallpaperScene scene() const;
    void carryOut(const automation::WallpaperDecision &decision);
    void startChange(const automation::WallpaperDecision::Start &start);
    bool startProcess(const automation::WallpaperRequest &request);
    void endProcess();
    void processEnded();
    void readShown();

    Surroundings m_surroundings;
    QString m_folder;
    automation::Wallpaper m_rule;
    automation::WallpaperSettings m_settings;
    QString m_shown; // title of what is on the desktop
    bool m_restoring = false;
    platform::ObjectHandle m_process; // before the wait for it: it ends later
    platform::WaitHandle m_wait;
};

} // namespace agent
