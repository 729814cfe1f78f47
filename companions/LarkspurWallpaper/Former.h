// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "companions/LarkspurWallpaper/PictureFolder.h"
#include "platform/DesktopWallpaper.h"

namespace wallpaper
{

// The desktop as the user had it: noted before it is changed, for as long as the note is needed.
class Former
{
public:
    Former(platform::DesktopWallpaper &desktop, PictureFolder &folder) : m_desktop(desktop), m_folder(folder)
    {
    }

    // Of what shows a picture that is not ours. False when it could not be stored; then nothing may change.
    bool note();
    // Puts it back where a picture of ours is shown, and forgets it. What the user has chosen since stays.
    // Returns a sentence; false in `done` when Windows refused any of it, and the note is kept.
    QString restore(bool &done);

    // Only there while there is something to put back.
    static constexpr QStringView file = u"former.json";

private:
    QStringList monitors() const; // or one empty name

    platform::DesktopWallpaper &m_desktop;
    PictureFolder &m_folder;
};

} // namespace wallpaper
