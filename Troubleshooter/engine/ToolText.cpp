// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/engine/ToolText.h"

#include <QCoreApplication>

namespace repair
{

QString toolText(const ToolRun &run, const QString &done)
{
    const auto tr = [](const char *text) { return QCoreApplication::translate("repair", text); };
    switch (run.state) {
    case ToolRun::State::Ended:
        return run.exitCode == 0
                   ? done
                   : tr("Windows says that not all of it could be done (code %1).").arg(run.exitCode);
    case ToolRun::State::Refused:
        return tr("Not done: administrator rights were refused.");
    case ToolRun::State::TookTooLong:
        return tr("Windows did not finish in time.");
    case ToolRun::State::Cancelled:
        return tr("You stopped waiting for it. Windows may still finish it.");
    case ToolRun::State::NotStarted:
        break;
    }
    return tr("Not done: the Windows program that does it could not be started.");
}

} // namespace repair
