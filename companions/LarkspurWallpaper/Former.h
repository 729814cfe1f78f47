// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "companions/LarkspurWallpaper/ImageFolder.h"
#include "platform/DesktopWallpaper.h"

namespace wallpaper
{

// Remembers the user's own wallpaper while one of ours is shown.
class Former
{
public:
    Former(platform::DesktopWallpaper &desktop, ImageFolder &folder) : m_desktop(desktop), m_folder(folder) {}

    // Stores the current wallpapers that are not ours. False if that failed; then nothing may be changed.
    bool note();
    // Restores them where one of our images is shown, and forgets them; newer choices of the user are kept.
    // Returns a sentence; `done` is false if Windows rejected any of it, and the record is kept.
    QString restore(bool &done);

    // Exists only while there is something to restore.
    static constexpr QStringView file = u"former.json";

private:
    QStringList monitors() const; // or a single empty name for all

    platform::DesktopWallpaper &m_desktop;
    ImageFolder &m_folder;
};

} // namespace wallpaper
