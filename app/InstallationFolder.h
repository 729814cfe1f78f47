// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The folder in which the companion executables are looked for: the value `Path` of the root key, read once
// at the start into a text of the whole process. Interface thread only.
namespace installation
{

// Reads `Path`; when it is empty (first start), writes and takes the current directory, as it is spelled.
void load();

QString folder();

// Writes `Path` anew and takes it.
void setFolder(const QString &folder);

// A companion's path: the folder and the name of the table, "\Taskwick.exe", put together as they are. With a
// folder from the current directory the separators are mixed, which Windows allows.
QString companion(const QString &executable);

} // namespace installation
