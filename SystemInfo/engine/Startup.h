// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

#include <functional>

namespace systeminfo
{

// The program of a command line as CreateProcessW looks for it: the quoted part, else the shortest beginning
// up to a blank that `exists` says yes to, with ".exe" behind it where it has no extension; the first word
// when there is none.
QString programOf(const QString &command, const std::function<bool(const QString &path)> &exists);

// What the task manager stores of a startup item: 12 bytes, the first one odd for a disabled item, with the
// time of that from the fifth on. No bytes: nobody ever switched it.
struct StartupState {
    bool enabled = true;
    QDateTime disabledSince;
};
StartupState startupState(const QByteArray &stored);

} // namespace systeminfo
