// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Opens what a shortcut names. No function shows a message box; each returns a sentence for the log.
namespace agent
{

// `command`: one of automation::builtInApps. Started by its full path in the system folders, so that a file
// of the same name elsewhere is never used.
QString startBuiltIn(const QString &command, const QString &workingFolder);
// `path` must be absolute. Without a working folder, the program's own folder is used.
QString startProgram(const QString &path, const QString &workingFolder);
QString openFolder(const QString &path);
QString openAddress(const QString &typed);

} // namespace agent
