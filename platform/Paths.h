// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileProbe.h"

#include <QString>

#include <optional>
#include <string>

// Paths here are absolute, with either separator. Everything works for paths beyond 260 characters and for
// names that Win32 would otherwise "repair" (trailing dots and spaces, device names). All functions may be
// called from any thread; those that touch the disk say so.
namespace platform
{

using core::FileFacts;

// Converts a path for the W functions of the file system: "\\?\C:\x", "\\?\UNC\server\share\x". "C:" denotes
// the root of the drive, never its current directory and never the volume device. Doubled separators, "." and
// ".." are resolved textually. A path that is not absolute only gets native separators. Not for display, and
// not for the shell (ShellExecute and SHFileOperation do not accept this form).
std::wstring apiPath(const QString &path);

// The form for display and storage: native separators, no "\\?\".
QString shownPath(const QString &path);

// Whether Win32, and with it the shell, takes the path in its display form for exactly that item. It does not
// if it would strip a trailing dot or space, resolve "..", or recognise a device name.
bool survivesWin32(const QString &path);

// "C:", "C:\" and "\\server\share", in either separator, with or without "\\?\".
bool isDriveRoot(const QString &path);

// Does disk I/O: a file, folder or link with this name exists, even a dangling link.
bool fileExists(const QString &path);

// Does disk I/O: the path after resolving all links, in display form and in the stored spelling (case, long
// names). Empty if it cannot be opened.
QString finalPath(const QString &path);

// Does disk I/O. The check before writing, renaming or deleting below a folder that the user chose. True only
// if `item` is below `root` by its text, and neither it nor anything in between is a link: the final path of
// the item must be the final path of the root plus the relative path, ignoring case. False for the root
// itself, for items that cannot be opened, and for short (8.3) names: in doubt nothing is touched.
bool isInside(const QString &root, const QString &item);

// Does disk I/O. Opens without requesting access, so that files that are in use, protected or in the cloud
// can be queried, and are not downloaded (except with core::AttributeRecallOnOpen). nullopt if the object
// cannot be opened.
std::optional<FileFacts> fileFacts(const QString &path);

} // namespace platform
