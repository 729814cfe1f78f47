// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconSource.h"

#include <QString>
#include <QStringList>

#include <memory>

// Files with icons: libraries of Windows, modules and icon files. Functions that touch the disk may be called
// from any thread.
namespace icons
{

// The libraries of Windows that the menu offers, in its order.
QStringList libraryNames();
// Where Windows keeps that library: explorer.exe in its own folder, all others in System32.
QString libraryPath(const QString &name);

// Disk. The icons of a file. A file that begins like an executable is loaded as data; any other is read as an
// icon file. Never null: a file that cannot be read has no icons. Since Windows 10 1903 the libraries of
// Windows keep theirs in SystemResources\NAME.mun; a module of the Windows folder without icons of its own
// is followed there.
std::unique_ptr<IconSource> openIcons(const QString &path, const QString &windowsFolder);
std::unique_ptr<IconSource> openIcons(const QString &path);

// Disk. Writes to a temporary name beside the target and replaces the target in one step. Returns why it
// failed, in words for the user; empty when it did not.
QString writeFile(const QString &path, const QByteArray &bytes);

} // namespace icons
