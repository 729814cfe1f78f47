// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/GuardedText.h"

#include <QCoreApplication>

namespace platform
{

QString guardedText(Guarded result)
{
    const auto tr = [](const char *text) { return QCoreApplication::translate("GuardedText", text); };
    switch (result) {
    case Guarded::Done:
        return {};
    case Guarded::Changed:
        return tr("changed since it was listed");
    case Guarded::Vanished:
        return tr("not there any more");
    case Guarded::ThroughLink:
        return tr("reached through a link");
    case Guarded::InCloud:
        return tr("kept in a cloud store");
    case Guarded::Protected:
        return tr("protected");
    case Guarded::ReadOnly:
        return tr("read-only");
    case Guarded::InUse:
        return tr("in use by another program");
    case Guarded::Denied:
        return tr("not allowed for this account");
    case Guarded::NotEmpty:
        return tr("not empty");
    case Guarded::NameTaken:
        return tr("the name is taken");
    case Guarded::Untraced:
        return tr("gone, and Windows did not tell where it went");
    case Guarded::Refused:
    case Guarded::Failed:
        break;
    }
    return tr("Windows did not do it");
}

} // namespace platform
