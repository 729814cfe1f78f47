// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ProtectedPlaces.h"

#include "platform/KnownFolders.h"
#include "platform/Paths.h"

#include <algorithm>

namespace platform
{

namespace
{

QString parentOf(const QString &path)
{
    return path.left(qMax<qsizetype>(path.lastIndexOf(u'\\'), 0));
}

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool isBelow(const QString &path, const QString &folder)
{
    return path.size() > folder.size() && path[folder.size()] == u'\\' &&
           path.startsWith(folder, Qt::CaseInsensitive);
}

// A folder that does not exist or cannot be opened is added in its given spelling.
void addFolder(QStringList &list, const QString &folder)
{
    if (folder.isEmpty())
        return;
    const QString final = finalPath(folder);
    list.append(final.isEmpty() ? folder : final);
}

ProtectedPlaces placesOfThisWindows()
{
    ProtectedPlaces places;
    for (const KnownFolder folder :
         {KnownFolder::Windows, KnownFolder::System, KnownFolder::ProgramFiles, KnownFolder::ProgramFilesX86})
        addFolder(places.system, knownFolder(folder));
    addFolder(places.shared, knownFolder(KnownFolder::ProgramData));
    addFolder(places.profileParents, parentOf(knownFolder(KnownFolder::Profile)));
    return places;
}

} // namespace

Protection protectionOf(const QString &path, const ProtectedPlaces &places)
{
    QString folder = shownPath(path);
    while (folder.endsWith(u'\\'))
        folder.chop(1);
    if (folder.isEmpty() || isDriveRoot(folder))
        return Protection::Holds;
    const auto isHeld = [&](const QString &place) { return isSame(folder, place) || isBelow(place, folder); };
    for (const QStringList &list : {places.system, places.shared, places.profileParents}) {
        if (std::ranges::any_of(list, isHeld))
            return Protection::Holds;
    }
    const QString parent = parentOf(folder);
    if (std::ranges::any_of(places.profileParents,
                            [&](const QString &users) { return isSame(parent, users); }))
        return Protection::Holds;
    const bool below =
        std::ranges::any_of(places.system, [&](const QString &place) { return isBelow(folder, place); });
    return below ? Protection::Below : Protection::None;
}

const ProtectedPlaces &protectedPlaces()
{
    static const ProtectedPlaces places = placesOfThisWindows();
    return places;
}

} // namespace platform
