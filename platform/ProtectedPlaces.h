// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace platform
{

// The folders that no verb of this program removes, empties or renames, whoever asks.
struct ProtectedPlaces {
    QStringList system; // the Windows folder and the program folders
    QStringList shared; // the folder of data for all users
    // The folders that hold the users' profiles; every folder directly below them is a profile.
    QStringList profileParents;
};

enum class Protection {
    None,
    Holds, // a drive root, one of the places, or a folder with one of them in it
    Below  // in one of the system's own folders: only what such a verb is there for
};

// By the text alone, ignoring case. `path` is a final path (see platform::finalPath()), for a link or another
// spelling is another text.
Protection protectionOf(const QString &path, const ProtectedPlaces &places);

// Those of this Windows, by their final paths; read once. Disk at the first call, any thread.
const ProtectedPlaces &protectedPlaces();

} // namespace platform
