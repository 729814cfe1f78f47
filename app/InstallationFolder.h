// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The folder that contains the companion executables: the value `Path` of the root key, read once at start
// into a process-wide variable. Interface thread only.
namespace installation
{

// Reads `Path`; if it is empty (first start), stores and uses the current directory with its current
// spelling.
void load();

QString folder();

// Stores and uses a new `Path`.
void setFolder(const QString &folder);

// The path of a companion: the folder and the table's name, "\Taskwick.exe", simply concatenated. If the
// folder came from the current directory, separators are mixed, which Windows accepts.
QString companion(const QString &executable);

} // namespace installation
