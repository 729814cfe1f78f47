// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ThumbnailRemovalDialog.h"

#include "imaging/engine/ThumbnailStore.h"
#include "platform/Guard.h"
#include "platform/Win32Enumerator.h"
#include "widgets/Theme.h"

#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

int removeThumbnails(const QString &temporaryFolder, const core::CancelFlag &cancel)
{
    const QString root = QDir::toNativeSeparators(temporaryFolder);
    const QString path = QDir::toNativeSeparators(imaging::ThumbnailStore::folder(temporaryFolder));
    int count = 0;
    {
        const platform::GuardedFolder folder(platform::GuardedRoot(root), path);
        if (folder.state() != platform::Guarded::Done)
            return 0; // missing, or a link to another location
        core::DirectoryListing listing;
        platform::Win32Enumerator().list(path, listing, cancel);
        for (std::size_t index = 0; index < listing.size() && !cancel.isSet(); ++index) {
            const core::DirectoryEntry entry = listing.at(index);
            const platform::ListedItem item{.name = entry.name.toString(),
                                            .kind = platform::ItemKind::File,
                                            .size = entry.size,
                                            .lastWriteTime = entry.lastWriteTime};
            if (folder.erase(item) == platform::Guarded::Done)
                ++count;
        }
    }
    if (!cancel.isSet())
        platform::eraseOwn(root, path); // only if empty
    return count;
}

void ThumbnailRemovalThread::work()
{
    removeThumbnails(m_temporaryFolder, cancelFlag());
    m_allTried = !stopRequested();
}

ThumbnailRemovalDialog::ThumbnailRemovalDialog(QWidget *parent) : QDialog(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Fernlight Larkspur"));
    auto *label = new QLabel(tr("The program removing unused thumbnail files. Please wait..."));
    auto *progress = new QProgressBar;
    progress->setRange(0, 0);
    progress->setTextVisible(false);
    progress->setMaximumHeight(theme::barHeight);
    auto *cancel = new QPushButton(tr("Cancel"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::spaceSection, theme::spaceSection, theme::spaceSection,
                               theme::spaceWide);
    layout->setSpacing(theme::spaceWide);
    layout->addWidget(label);
    layout->addWidget(progress);
    layout->addWidget(cancel, 0, Qt::AlignTrailing);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

ThumbnailRemovalDialog::~ThumbnailRemovalDialog() = default;

void ThumbnailRemovalDialog::start(const QString &temporaryFolder)
{
    m_thread.reset(new ThumbnailRemovalThread(temporaryFolder));
    connect(m_thread.get(), &ThumbnailRemovalThread::done, this, &ThumbnailRemovalDialog::finish);
    m_thread->start();
}

// Cancelled or finished. A pending result must not close the window any more.
void ThumbnailRemovalDialog::done(int result)
{
    if (m_thread) {
        m_thread->disconnect(this);
        m_thread->requestStop();
    }
    QDialog::done(result);
}

void ThumbnailRemovalDialog::finish()
{
    if (!m_thread->allTried())
        return;
    // Before asking the window to close, or it would start the removal again and again.
    imaging::ThumbnailStore::noteRemoved();
    emit closeApp();
}
