// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/FreeSpaceDialog.h"

#include "core/SizeText.h"
#include "widgets/Theme.h"
#include "widgets/WrappedLabel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

FreeSpaceDialog::FreeSpaceDialog(QWidget *parent)
    : QDialog(parent),
      m_drives(new QComboBox(this)),
      m_start(new QPushButton(tr("Wipe Free Space"), this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Wipe Free Space"));
    auto *text = new WrappedLabel(this);
    text->setText(
        tr("Fills the free space of a drive with random data and frees it again, so that what was deleted "
           "before cannot be read back. No file is touched. On drives without moving parts, old blocks may "
           "be out of reach."));
    auto *label = new QLabel(tr("Drive:"), this);
    label->setBuddy(m_drives);
    m_drives->setObjectName(QStringLiteral("driveComboBox"));
    m_drives->setAccessibleName(tr("Drive"));
    m_start->setObjectName(QStringLiteral("wipeButton"));
    m_start->setEnabled(false);
    theme::makePrimary(m_start);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->addButton(m_start, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &FreeSpaceDialog::choose);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::spaceSection, theme::spaceSection, theme::spaceSection,
                               theme::spaceWide);
    layout->setSpacing(theme::space);
    layout->addWidget(text);
    layout->addWidget(label);
    layout->addWidget(m_drives);
    layout->addStretch();
    layout->addWidget(buttons);
    resize(460, 260);
    connect(m_drives, &QComboBox::activated, this, [this] { m_picked = true; });
    connect(&m_lister, &platform::DriveLister::driveRead, this, &FreeSpaceDialog::addDrive);
    m_lister.refresh();
}

void FreeSpaceDialog::addDrive(const platform::Drive &drive)
{
    using Type = platform::Drive::Type;
    if (!drive.ready || (drive.type != Type::Fixed && drive.type != Type::Removable))
        return;
    // Drives answer in any order. The first letter stays selected until the user picks one; then that
    // selection stays.
    const auto before = std::ranges::find_if(m_ready, [&](const auto &d) { return d.root > drive.root; });
    const auto row = static_cast<int>(before - m_ready.begin());
    m_ready.insert(row, drive);
    m_drives->insertItem(
        row, tr("%1  %2 free of %3")
                 .arg(drive.root, core::sizeText(drive.freeBytes), core::sizeText(drive.totalBytes)));
    if (!m_picked)
        m_drives->setCurrentIndex(0);
    m_start->setEnabled(true);
}

void FreeSpaceDialog::choose()
{
    const platform::Drive drive = m_ready.value(m_drives->currentIndex());
    accept();
    if (drive.ready)
        emit driveChosen(drive.root, drive.freeBytes);
}
