// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace platform
{

// The desktop wallpaper. A monitor is identified by its device path; an empty name means all monitors. Tests
// use their own implementation. One thread, on which COM is initialised.
class DesktopWallpaper
{
public:
    virtual ~DesktopWallpaper() = default;

    // Monitors that can have an image of their own; empty if Windows supports only a single one.
    virtual QStringList monitors() = 0;
    // Empty if there is none. For all monitors: also empty if they differ.
    virtual QString picture(const QString &monitor) = 0;
    // An empty path removes the image from all monitors.
    virtual bool setPicture(const QString &monitor, const QString &path) = 0;
    // The position as a DESKTOP_WALLPAPER_POSITION; -1 if unknown.
    virtual int position() = 0;
    virtual void setPosition(int position) = 0;
    // The folder of Windows' slide show while one is active, otherwise empty.
    virtual QString slideshowFolder() = 0;
    virtual bool setSlideshowFolder(const QString &folder) = 0;
};

inline constexpr int wallpaperFills = 4; // DWPOS_FILL: no bars, no distortion

// Uses IDesktopWallpaper (Windows 8 and later), or the legacy call if that is missing.
std::unique_ptr<DesktopWallpaper> systemWallpaper();

// Whether the Internet connection is metered, roaming, or near its data limit. False if unknown. COM must be
// initialised.
bool isConnectionMetered();

} // namespace platform
