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

// The form for the W functions of the file system: "\\?\C:\x", "\\?\UNC\server\share\x". "C:" means the root
// of the drive, never its current directory and never the volume device. Doubled separators, "." and ".." are
// resolved in the text. A path that is not absolute is returned with native separators only. Not for showing,
// and not for the shell (ShellExecute and SHFileOperation do not take it).
std::wstring apiPath(const QString &path);

// The form to show and to store: native separators, no "\\?\".
QString shownPath(const QString &path);

// Whether Win32, and with it the shell, takes a path in the shown form for the item of exactly that name. It
// does not when it would drop a trailing dot or space, resolve "..", or see a device: that is another item.
bool survivesWin32(const QString &path);

// "C:", "C:\" and "\\server\share", in either separator, with or without "\\?\".
bool isDriveRoot(const QString &path);

// Disk: something (file or folder) bears this name. A dangling link does too.
bool fileExists(const QString &path);

// Disk: where the path ends when every link on its way is followed, in the shown form and in the stored
// spelling (case, long names). Empty when it cannot be opened.
QString finalPath(const QString &path);

// Disk: the guard before every write, rename or delete below a folder that the user chose. True only when
// `item` lies below `root` by its text and neither it nor anything between the two is a link, that is, when
// the final path of the item is the final path of the root plus the relative path, ignoring case. False for
// the root itself, for what cannot be opened, and for short (8.3) names: what is doubtful is not touched.
bool isInside(const QString &root, const QString &item);

// Disk: opens without asking for any access, so that a file in use, or without rights, or in the cloud can be
// asked and is not fetched (but for core::AttributeRecallOnOpen). Empty when the object cannot be opened.
std::optional<FileFacts> fileFacts(const QString &path);

} // namespace platform
