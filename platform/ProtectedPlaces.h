// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform
{

// Folders that this program never removes, empties or renames.
struct ProtectedPlaces {
    QStringList system; // the Windows folder and the program folders
    QStringList shared; // the folder of data for all users
    // Folders that contain the users' profiles; each folder directly below is a profile.
    QStringList profileParents;
};

enum class Protection {
    None,
    Holds, // a drive root, one of the places, or a parent of one
    Below  // inside a system folder: only allowed for operations meant for that
};

// Decided by text alone, ignoring case. `path` must be a final path (see platform::finalPath()), since a link
// or another spelling would not match.
Protection protectionOf(const QString &path, const ProtectedPlaces &places);

// The final paths of this Windows' places; read once. Does disk I/O on the first call; any thread.
const ProtectedPlaces &protectedPlaces();

} // namespace platform
