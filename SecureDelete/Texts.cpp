// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/Texts.h"

#include "core/CountText.h"

namespace securedelete
{

using platform::Guarded;

QString Texts::method(Method method)
{
    switch (method) {
    case Method::Gutmann:
        return tr("using Gutmann (35 Pass)");
    case Method::Dod7:
        return tr("using DOD 5220.22M (7 Pass)");
    case Method::Dod3:
        return tr("using DOD 5220.22M (3 Pass)");
    case Method::Random:
        break;
    }
    return tr("using Random");
}

QString Texts::passes(Method method, int randomPasses)
{
    return core::countText(passCount(method, randomPasses), tr("1 pass"), tr("%1 passes"));
}

QString Texts::fault(Fault fault)
{
    switch (fault) {
    case Fault::None:
        return {};
    case Fault::Vanished:
        return tr("It is no longer there.");
    case Fault::Changed:
        return tr("It has changed since it was added.");
    case Fault::ReadOnly:
        return tr("It is read-only.");
    case Fault::InUse:
        return tr("Another program is using it.");
    case Fault::Denied:
        return tr("Windows denies access to it.");
    case Fault::ThroughLink:
        return tr("It is reached through a link, and lies in another place.");
    case Fault::InCloud:
        return tr("Its content lies in a cloud store: removing it here would remove it there as well.");
    case Fault::Protected:
        return tr("It belongs to Windows, to installed programs or to a user's profile.");
    case Fault::OtherNames:
        return tr("It has other names (hard links), whose content would be destroyed with it.");
    case Fault::WriteFailed:
        return tr("It could not be overwritten to its end. A part of it may be destroyed.");
    case Fault::DiskFull:
        return tr("It has holes, and overwriting them needs more room than the drive has.");
    case Fault::NotEmpty:
        return tr("Something in it was left.");
    case Fault::NameTaken:
        return tr("Another item has its name.");
    case Fault::Cancelled:
        return tr("Cancelled. A part of it may be overwritten.");
    case Fault::Failed:
        break;
    }
    return tr("Windows could not remove it.");
}

QString Texts::outcome(const ShredRecord &record)
{
    if (!record.destroyed) {
        const QString why = fault(record.fault);
        return record.leftName.isEmpty() ? why : tr("%1 Its name is now \"%2\".").arg(why, record.leftName);
    }
    if (record.isLink)
        return tr("Link removed; what it leads to was not touched.");
    if (record.isFolder)
        return tr("Folder removed.");
    QString text = tr("Overwritten, renamed and deleted.");
    if (record.streams > 0)
        text += u' ' + core::countText(record.streams, tr("1 alternate data stream with it."),
                                       tr("%1 alternate data streams with it."));
    if (record.oldClustersMaySurvive)
        text +=
            u' ' +
            tr("It was compressed, encrypted or sparse: older copies of its data may survive on the drive.");
    return text;
}

Fault faultOf(Guarded result)
{
    switch (result) {
    case Guarded::Done:
        return Fault::None;
    case Guarded::Changed:
        return Fault::Changed;
    case Guarded::Vanished:
        return Fault::Vanished;
    case Guarded::ThroughLink:
        return Fault::ThroughLink;
    case Guarded::InCloud:
        return Fault::InCloud;
    case Guarded::Protected:
        return Fault::Protected;
    case Guarded::ReadOnly:
        return Fault::ReadOnly;
    case Guarded::InUse:
        return Fault::InUse;
    case Guarded::Denied:
        return Fault::Denied;
    case Guarded::NotEmpty:
        return Fault::NotEmpty;
    case Guarded::NameTaken:
        return Fault::NameTaken;
    case Guarded::Refused:
    case Guarded::Failed:
    case Guarded::Untraced: // the recycle bin is not used here
        break;
    }
    return Fault::Failed;
}

} // namespace securedelete
