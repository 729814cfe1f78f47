// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <atomic>

namespace imaging
{

// Tracks the thumbnails that image modules write to disk while the program runs. A module reports the first
// one it writes; when the window closes, the main window removes the files before the program ends. Files
// only, no folders, all directly in folder(). Any thread.
class ThumbnailStore
{
public:
    // Their folder, below the user's temporary folder (QDir::tempPath()). Nothing else is ever stored there.
    static QString folder(const QString &temporaryFolder)
    {
        return temporaryFolder + QLatin1String("/Fernlight Larkspur/Thumbnails");
    }

    static void noteProduced() noexcept { s_produced.store(true); }
    static bool produced() noexcept { return s_produced.load(); }
    // After the files are removed; a file that its writer still holds open is removed by the writer.
    static void noteRemoved() noexcept { s_produced.store(false); }

private:
    inline static std::atomic_bool s_produced{false};
};

} // namespace imaging
