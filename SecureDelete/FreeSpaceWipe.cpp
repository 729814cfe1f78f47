// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/FreeSpaceWipe.h"

#include "SecureDelete/Settings.h"
#include "SecureDelete/Win32FreeSpace.h"
#include "core/SizeText.h"
#include "widgets/JobHost.h"

#include <QRandomGenerator>

#include <memory>

namespace securedelete
{

namespace
{

class FillProgress : public FreeSpaceListener
{
public:
    explicit FillProgress(core::ProgressRelay &relay) : m_relay(relay) {}
    void spaceFilled(quint64 bytes, quint64 total) override
    {
        m_relay.setTotalBytes(total);
        m_relay.setBytes(bytes);
    }

private:
    core::ProgressRelay &m_relay;
};

} // namespace

FreeSpaceWipe::FreeSpaceWipe(JobHost &jobs, ScanPage *page, Place place, QObject *parent)
    : QObject(parent),
      m_jobs(jobs),
      m_page(page),
      m_place(std::move(place))
{
}

QString FreeSpaceWipe::question(const QString &drive, quint64 freeBytes)
{
    return tr("Fill the free space of %1 with random data, %2, and free it again?\n\nThis can take "
              "hours. The drive is nearly full meanwhile; no file on it is touched.")
        .arg(drive, core::sizeText(freeBytes));
}

void FreeSpaceWipe::start(const QString &drive)
{
    const auto folder = std::make_shared<Win32FreeSpace>(m_place(drive));
    // Stored before the folder is created, so that the next start can find it after a crash.
    freeSpaceFolderValue.write(folder->path());
    m_jobs.run(
        {.busyText = tr("the wiping of free space"),
         .page = m_page,
         .title = tr("Wiping free space. Please wait ..."),
         .subject = folder->path(),
         .stoppingTitle = tr("Freeing the space again ...")},
        [folder](const core::JobControl &job) {
            FillProgress progress(job.progress);
            const FreeSpaceOptions options{.seed = QRandomGenerator::system()->generate()};
            return folder->make() ? wipeFreeSpace(*folder, options, progress, job.cancel) : FreeSpaceResult();
        },
        [this, drive](auto &job) {
            const FreeSpaceResult result = job.takeResult().value_or(FreeSpaceResult());
            if (result.removed)
                freeSpaceFolderValue.write(QString());
            tell(drive, result, job.stopRequested(), job.error());
        });
}

void FreeSpaceWipe::tell(const QString &drive, const FreeSpaceResult &result, bool stopped,
                         const QString &error)
{
    const QString size = core::sizeText(result.bytesWritten);
    QString text = error;
    if (error.isEmpty() && result.filled)
        text = tr("The free space of %1 was overwritten: %2.").arg(drive, size);
    else if (error.isEmpty() && stopped)
        text = tr("Cancelled. %1 of the free space of %2 were overwritten.").arg(size, drive);
    else if (error.isEmpty())
        text = tr("Windows does not let this program fill %1.").arg(drive);
    if (!result.removed && result.bytesWritten > 0)
        text +=
            u' ' + tr("Some of it is still taken; the next start of this program tries again to free it.");
    emit ended(result.filled ? NoticeBar::Kind::Success : NoticeBar::Kind::Warning, text);
}

void FreeSpaceWipe::removeLeftOver()
{
    const QString path = freeSpaceFolderValue.read();
    if (path.isEmpty())
        return;
    m_jobs.run(
        {.busyText = tr("the freeing of space")},
        [path](const core::JobControl &) { return Win32FreeSpace::removeLeftOver(path); },
        [](auto &job) {
            if (job.takeResult().value_or(false))
                freeSpaceFolderValue.write(QString());
        });
}

} // namespace securedelete
