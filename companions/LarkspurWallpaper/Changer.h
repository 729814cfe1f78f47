// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "companions/LarkspurWallpaper/Former.h"
#include "companions/LarkspurWallpaper/ImageFetcher.h"

#include <functional>

namespace wallpaper
{

// External dependencies of a change.
struct World {
    automation::ImageServices services;
    const ImageFetcher &web;
    platform::DesktopWallpaper &desktop;
    ImageFolder &folder;
    std::function<bool()> isMetered;
    QDateTime now; // UTC
};

// Processes one request: finds an image, checks and sets it, or restores the user's wallpaper. On any failure
// the desktop stays as it is.
automation::WallpaperAnswer serve(const automation::WallpaperRequest &request, const World &world);

} // namespace wallpaper
