// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace platform
{

// The picture behind the icons of the desktop. A monitor is named by its device path; an empty name stands
// for all of them. Tests put a class of their own in its place. One thread, on which COM is in use.
class DesktopWallpaper
{
public:
    virtual ~DesktopWallpaper() = default;

    // Those that may have a picture each; none where Windows knows one picture only.
    virtual QStringList monitors() = 0;
    // Empty where there is none. For all monitors: empty also where they differ.
    virtual QString picture(const QString &monitor) = 0;
    // An empty path takes the picture away, from all monitors.
    virtual bool setPicture(const QString &monitor, const QString &path) = 0;
    // How a picture lies on a monitor, as DESKTOP_WALLPAPER_POSITION numbers it; -1 when unknown.
    virtual int position() = 0;
    virtual void setPosition(int position) = 0;
    // The folder of Windows' own slide show while one runs, else empty.
    virtual QString slideshowFolder() = 0;
    virtual bool setSlideshowFolder(const QString &folder) = 0;
};

inline constexpr int wallpaperFills = 4; // DWPOS_FILL: no bars, nothing distorted

// By the interface of Windows 8 and later, or where that is missing by the call that all versions have.
std::unique_ptr<DesktopWallpaper> systemWallpaper();

// Whether the connection to the internet is paid by volume, is roaming, or is near its limit. False where
// Windows does not tell. On which COM is in use.
bool isConnectionMetered();

} // namespace platform
