// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// True when this process could write the file or put another one in its folder.
bool changeableByThisProcess(const QString &file, const QString &folder);

// The same for a process that has no administrator rights: then every other program of the user could have
// done so, and starting the file elevated would give it the rights. A process that is elevated itself cannot
// tell by trying, and answers false.
bool changeableWithoutElevation(const QString &file, const QString &folder);
