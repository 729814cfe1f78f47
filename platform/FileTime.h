// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>

namespace platform
{

// A FILETIME (100 ns since 1601-01-01 UTC) in local time, to the millisecond. When Windows cannot convert it
// (the highest bit is set), prints the debug text "Error\n" and returns an invalid time.
QDateTime localFileTime(quint64 fileTime);

// The same as text, "Thu Nov 5 03:04:05 2026"; empty if it cannot be converted.
QString fileTimeText(quint64 fileTime);

} // namespace platform
