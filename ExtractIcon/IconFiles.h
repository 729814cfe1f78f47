// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"
#include "ExtractIcon/engine/IconSource.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

// Files that contain icons: Windows libraries, modules and icon files. Functions that do disk I/O may be
// called from any thread.
namespace icons
{

// The Windows libraries in the menu, in its order.
QStringList libraryNames();
// The path of such a library: explorer.exe is in the Windows folder, all others in System32.
QString libraryPath(const QString &name);

// Does disk I/O. Opens a file with icons. Executables are loaded as data; anything else is parsed as an icon
// file. Never null: an unreadable file has no icons. Since Windows 10 1903 the icons of system libraries are
// in SystemResources\NAME.mun, which is used for modules of the Windows folder without icons of their own.
std::unique_ptr<IconSource> openIcons(const QString &path, const QString &windowsFolder);
std::unique_ptr<IconSource> openIcons(const QString &path);

// Does disk I/O. All images of one icon of a file, decoded; empty if it cannot be read any more.
QList<IconImage> readImages(const QString &path, quint32 id);

// Does disk I/O. Writes to a temporary file beside the target and replaces the target in one step. Returns an
// empty string on success, otherwise the reason for the user.
QString writeFile(const QString &path, const QByteArray &bytes);

} // namespace icons
