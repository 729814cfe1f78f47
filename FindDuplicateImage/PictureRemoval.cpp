// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/PictureRemoval.h"

#include "platform/Dialogs.h"

#include <QPointer>

#include <utility>

using platform::Removal;

PictureRemoval::PictureRemoval(QObject *parent) : QObject(parent) {}

PictureRemoval::~PictureRemoval() = default;

void PictureRemoval::start(const platform::ShownFile &file)
{
    if (std::exchange(m_running, true))
        return;
    m_task.start([this, file](const core::CancelFlag &) -> LatestTask::Effect {
        if (const std::optional<Removal> obstacle = platform::removalObstacle(file))
            return [this, obstacle] { finish(obstacle); };
        return [this, file] { ask(file); };
    });
}

void PictureRemoval::ask(const platform::ShownFile &file)
{
    // The box has no owner and handles messages: this object may be gone when it returns.
    const QPointer<PictureRemoval> guard(this);
    const int answer = platform::dialogs().messageBox(
        tr("Are you sure you want to move %1 to the recycle bin?").replace(QLatin1String("%1"), file.path),
        tr("Confirm to save changes"), platform::yesNoWarning);
    if (!guard)
        return;
    if (answer == platform::idYes)
        move(file);
    else
        finish(std::nullopt);
}

void PictureRemoval::move(const platform::ShownFile &file)
{
    m_task.start([this, file](const core::CancelFlag &) -> LatestTask::Effect {
        const Removal result = platform::moveShownFile(file);
        return [this, result] { finish(result); };
    });
}

void PictureRemoval::finish(std::optional<Removal> result)
{
    m_running = false;
    emit finished(result);
}

QString PictureRemoval::message(const QString &path, Removal result)
{
    switch (result) {
    case Removal::Changed:
        return tr("%1 has changed since the scan and was left alone. Scan again to compare it.").arg(path);
    case Removal::Vanished:
        return tr("%1 is not there any more.").arg(path);
    case Removal::ThroughLink:
        return tr("%1 leads through a link to another place and was left alone.").arg(path);
    case Removal::Refused:
        return tr("%1 cannot be given to the recycle bin and was left alone.").arg(path);
    case Removal::Failed:
        return tr("Windows did not move %1 to the recycle bin. It may be in use, or its drive has no recycle "
                  "bin.")
            .arg(path);
    case Removal::Moved:
        break;
    }
    return {};
}
