// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// True if this process could write to the file or replace it in its folder.
bool changeableByThisProcess(const QString &file, const QString &folder);

// The same for a process without administrator rights: then any other program of the user could have done so,
// and starting the file elevated would grant it those rights. An elevated process cannot find out by trying,
// and returns false.
bool changeableWithoutElevation(const QString &file, const QString &folder);
