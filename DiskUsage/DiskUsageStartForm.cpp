// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageStartForm.h"

#include "core/SizeText.h"
#include "widgets/CardGridLayout.h"
#include "widgets/FLCardButton.h"

using platform::Drive;

namespace
{

constexpr int driveCardWidth = 275; // "NTFS, 1000.00 GB free of 1000.00 GB"

const char *driveIcon(Drive::Type type)
{
    switch (type) {
    case Drive::Type::Removable:
        return "DriveUsb48";
    case Drive::Type::Network:
        return "DriveNetwork48";
    case Drive::Type::Optical:
        return "DriveCd48";
    default:
        return "Drive48";
    }
}

// As in Explorer: the label, or the kind of drive if it has none, and the letter.
QString driveName(const Drive &drive)
{
    QString name = drive.label;
    if (name.isEmpty()) {
        switch (drive.type) {
        case Drive::Type::Removable:
            name = DiskUsageStartForm::tr("Removable Disk");
            break;
        case Drive::Type::Network:
            name = DiskUsageStartForm::tr("Network Drive");
            break;
        case Drive::Type::Optical:
            name = DiskUsageStartForm::tr("CD Drive");
            break;
        case Drive::Type::RamDisk:
            name = DiskUsageStartForm::tr("RAM Disk");
            break;
        default:
            name = DiskUsageStartForm::tr("Local Disk");
        }
    }
    return QStringLiteral("%1 (%2)").arg(name, drive.root.left(2));
}

} // namespace

DiskUsageStartForm::DiskUsageStartForm(QWidget *parent) : DiskUsageStartForm(platform::readDrive, parent) {}

DiskUsageStartForm::DiskUsageStartForm(platform::DriveLister::Reader reader, QWidget *parent)
    : StartPage({tr("Folder Size Analyzer"),
                 tr("See which folders and files fill a drive. You can also drop a folder on this page."),
                 tr("Drop the folder to scan it")},
                parent),
      m_lister(std::move(reader))
{
    using platform::KnownFolder;
    offerFolder({"selectFolderButton", "FolderOpen24", tr("Select folder to scan")},
                tr("Select folder to scan"));
    addOptions(tr("File types and folders to leave out"));
    m_driveGrid = addSection(tr("Drives"), driveCardWidth);
    addSpecialFolders({KnownFolder::Desktop, KnownFolder::Documents, KnownFolder::Downloads,
                       KnownFolder::Music, KnownFolder::Pictures, KnownFolder::Videos, KnownFolder::Profile});
    showRecentFolders({});
    connect(&m_lister, &platform::DriveLister::driveRead, this, &DiskUsageStartForm::showDrive);
    controls::shortcut(this, QKeySequence::Refresh, [this] { refreshDrives(); });
}

DiskUsageStartForm::~DiskUsageStartForm() = default;

void DiskUsageStartForm::showEvent(QShowEvent *event)
{
    StartPage::showEvent(event);
    refreshDrives();
}

void DiskUsageStartForm::refreshDrives()
{
    const QStringList roots = platform::driveRoots();
    const QStringList shown = m_driveCards.keys();
    for (const QString &gone : shown)
        if (!roots.contains(gone)) {
            m_drives.remove(gone);
            delete m_driveCards.take(gone);
        }
    for (const QString &root : roots) {
        if (m_driveCards.contains(root))
            continue;
        FLCardButton *card =
            addFolderCard(m_driveGrid, root, controls::image(driveIcon(Drive::Type::Unknown)), root);
        card->setObjectName(QStringLiteral("driveCard") + root.left(1));
        card->setIconSize({36, 36});
        card->setCaption(tr("Reading ..."));
        card->setShare(0);
        m_driveCards.insert(root, card);
    }
    while (QLayoutItem *item = m_driveGrid->takeAt(0))
        delete item;
    for (const QString &root : roots) // a new drive is inserted at its alphabetical position
        m_driveGrid->addWidget(m_driveCards.value(root));
    orderTabs();
    m_lister.refresh(roots);
}

void DiskUsageStartForm::showDrive(const Drive &drive)
{
    FLCardButton *card = m_driveCards.value(drive.root);
    if (!card)
        return;
    m_drives.insert(drive.root, drive);
    emit driveRead(drive);
    card->setText(driveName(drive));
    card->setAccessibleName(card->text());
    card->setIcon(controls::image(driveIcon(drive.type)));
    card->setEnabled(drive.ready);
    if (!drive.ready) {
        card->setCaption(tr("Not ready"));
        card->setShare(0);
        return;
    }
    const quint64 used = drive.usedBytes();
    card->setCaption(
        tr("%1, %2 free of %3")
            .arg(drive.fileSystem, core::sizeText(drive.freeBytes), core::sizeText(drive.totalBytes)));
    card->setToolTip(tr("%1, %2\n%3 used\n%4 free\n%5 in all")
                         .arg(card->text(), drive.fileSystem, core::sizeText(used),
                              core::sizeText(drive.freeBytes), core::sizeText(drive.totalBytes)));
    card->setShare(drive.totalBytes == 0 ? 0
                                         : static_cast<double>(used) / static_cast<double>(drive.totalBytes));
}

std::optional<Drive> DiskUsageStartForm::drive(const QString &root) const
{
    const auto found = m_drives.constFind(root.toUpper());
    return found == m_drives.constEnd() || !found->ready ? std::nullopt : std::optional(*found);
}

void DiskUsageStartForm::showRecentFolders(const QStringList &folders)
{
    setRecent(tr("Recent Scanned Folders"), folders);
}
