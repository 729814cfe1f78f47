// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RecycleBin.h"

#include "platform/Paths.h"

#include <QFile>

namespace platform
{

namespace
{

class WindowsRecycleBin : public RecycleBin
{
protected:
    // The shell reports success even for an operation that it aborted, and on a drive without a bin. A file
    // whose new location it does not report does not count as moved.
    bool move(const QString &path) override
    {
        QString place;
        return QFile::moveToTrash(path, &place) && !fileExists(path) && !place.isEmpty();
    }
};

bool mayTry(const QString &path, RecycleBin::Accept accept)
{
    if (!RecycleBin::takesPath(path))
        return false;
    const std::optional<FileFacts> facts = fileFacts(path);
    if (!facts)
        return false;
    const bool folder = (facts->attributes & core::AttributeDirectory) != 0;
    if (folder && accept != RecycleBin::Accept::FilesAndFolders)
        return false;
    // Its final path is in its own folder, so it is not a link.
    return isInside(path.left(path.lastIndexOf(u'\\')), path);
}

RecycleBin *replaced = nullptr;

} // namespace

bool RecycleBin::takesPath(const QString &path)
{
    const QString shown = shownPath(path);
    return !shown.isEmpty() && !isDriveRoot(shown) && survivesWin32(shown);
}

RecycleBin::Outcome RecycleBin::moveToTrash(const QString &path, Accept accept)
{
    const QString shown = shownPath(path);
    if (!mayTry(shown, accept))
        return Outcome::Refused;
    return move(shown) ? Outcome::Moved : Outcome::Failed;
}

RecycleBin &recycleBin()
{
    static WindowsRecycleBin real;
    return replaced ? *replaced : real;
}

void setRecycleBin(RecycleBin *replacement)
{
    replaced = replacement;
}

} // namespace platform
