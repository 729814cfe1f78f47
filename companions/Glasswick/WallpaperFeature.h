// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/Wallpaper.h"
#include "companions/Glasswick/Feature.h"
#include "platform/WaitHandle.h"

namespace agent
{

// Changes the wallpaper through a separate short-lived process (companions/LarkspurWallpaper). The image
// stays when the agent ends; the user's wallpaper is restored when the feature is switched off.
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
    QString m_shown; // title of the current wallpaper
    bool m_restoring = false;
    platform::ObjectHandle m_process; // declared before the wait that uses it
    platform::WaitHandle m_wait;
};

} // namespace agent
