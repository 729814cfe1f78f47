// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What a shortcut opens. Nothing shows a box of its own; each function answers with a sentence for the log.
namespace agent
{

// `command`: one of automation::builtInApps. Started by its whole path in the system's folders, so that no
// file of the same name elsewhere is.
QString startBuiltIn(const QString &command, const QString &workingFolder);
// `path`: whole. Without a working folder the program's own is used.
QString startProgram(const QString &path, const QString &workingFolder);
QString openFolder(const QString &path);
QString openAddress(const QString &typed);

} // namespace agent
