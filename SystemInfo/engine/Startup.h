// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

#include <functional>

namespace systeminfo
{

// The program in a command line, found as CreateProcessW would: the quoted part; otherwise the shortest
// prefix up to a blank for which `exists` is true (with ".exe" added if it has no extension); otherwise the
// first word.
QString programOf(const QString &command, const std::function<bool(const QString &path)> &exists);

// The task manager's state of a startup item: 12 bytes, of which the first is odd for a disabled item, and
// the time of disabling starts at byte 4. No data means that it was never switched.
struct StartupState {
    bool enabled = true;
    QDateTime disabledSince;
};
StartupState startupState(const QByteArray &stored);

} // namespace systeminfo
