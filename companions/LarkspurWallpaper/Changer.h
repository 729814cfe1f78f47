// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "companions/LarkspurWallpaper/Former.h"
#include "companions/LarkspurWallpaper/PictureFetcher.h"

#include <functional>

namespace wallpaper
{

// What a change needs of the outside world.
struct World {
    automation::PictureServices services;
    const PictureFetcher &web;
    platform::DesktopWallpaper &desktop;
    PictureFolder &folder;
    std::function<bool()> isMetered;
    QDateTime now; // UTC
};

// Carries out one request: finds a picture, checks it, and sets it; or puts back what was there. Whatever
// fails, the desktop stays as it is.
automation::WallpaperAnswer serve(const automation::WallpaperRequest &request, const World &world);

} // namespace wallpaper
