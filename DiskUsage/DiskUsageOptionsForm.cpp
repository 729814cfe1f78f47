// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageOptionsForm.h"

#include "DiskUsage/DiskUsageEditFileTypesDialog.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/Win32Enumerator.h"
#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"

#include <QCheckBox>
#include <QDir>
#include <QIcon>
#include <QPushButton>
#include <QShowEvent>

using namespace diskusage;

namespace
{
constexpr int maxNamedSiblings = 3;
}

// The page is built in DiskUsageOptionsPage.cpp.

DiskUsageOptionsForm::~DiskUsageOptionsForm() = default;

void DiskUsageOptionsForm::load()
{
    m_stored = loadScanSettings();
    m_oneDrive = oneDriveFolder();
    m_loading = true;
    showFileTypes(m_stored.fileTypes);
    showExcludedFolders(m_stored.excludedFolders);
    m_excludeOneDrive->setChecked(m_stored.excludeOneDrive);
    m_loading = false;
    m_oneDriveLabel->setText(m_oneDrive.isEmpty() ? tr("OneDrive is not set up for this user.")
                                                  : tr("The OneDrive folder is %1").arg(m_oneDrive));
    m_openOneDrive->setEnabled(!m_oneDrive.isEmpty());
    m_notice->hide();
    editsChanged();
}

void DiskUsageOptionsForm::showFileTypes(const core::FileTypeTable &table)
{
    const int row = m_fileTypeTree->indexOfTopLevelItem(m_fileTypeTree->currentItem());
    m_fileTypes = table;
    m_fileTypeTree->clear();
    for (const core::FileTypeCategory &category : table) {
        auto *item = new QTreeWidgetItem(m_fileTypeTree, {category.displayText()});
        item->setIcon(0, QIcon(core::fileTypeIcon(category.name)));
        item->setCheckState(0, category.enabled ? Qt::Checked : Qt::Unchecked);
    }
    m_fileTypeTree->setCurrentItem(m_fileTypeTree->topLevelItem(qMax(0, row)));
}

void DiskUsageOptionsForm::showExcludedFolders(const std::vector<core::ExcludedFolder> &folders)
{
    m_excluded->clear();
    for (const core::ExcludedFolder &folder : folders)
        addExcludedRow(folder);
}

void DiskUsageOptionsForm::addExcludedRow(const core::ExcludedFolder &folder)
{
    auto *item = new QTreeWidgetItem(m_excluded, {folder.path});
    item->setIcon(0, controls::image("Folder16"));
    item->setCheckState(0, folder.enabled ? Qt::Checked : Qt::Unchecked);
}

ScanSettings DiskUsageOptionsForm::edited() const
{
    ScanSettings settings;
    settings.fileTypes = m_fileTypes;
    for (int row = 0; row < m_fileTypeTree->topLevelItemCount(); ++row)
        settings.fileTypes[static_cast<std::size_t>(row)].enabled =
            m_fileTypeTree->topLevelItem(row)->checkState(0) == Qt::Checked;
    for (int row = 0; row < m_excluded->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *item = m_excluded->topLevelItem(row);
        settings.excludedFolders.push_back({item->checkState(0) == Qt::Checked, item->text(0)});
    }
    settings.excludeOneDrive = m_excludeOneDrive->isChecked();
    return settings;
}

bool DiskUsageOptionsForm::hasUnsavedChanges() const
{
    return edited() != m_stored;
}

void DiskUsageOptionsForm::editsChanged()
{
    if (m_loading)
        return;
    m_save->setEnabled(hasUnsavedChanges());
    m_edit->setEnabled(m_fileTypeTree->currentItem() != nullptr);
    m_excludeAdd->setEnabled(m_excluded->topLevelItemCount() < maxExcludedFolders);
    m_excludeRemove->setEnabled(m_excluded->currentItem() != nullptr);
    checkSiblings();
}

bool DiskUsageOptionsForm::tryClose()
{
    if (hasUnsavedChanges()) {
        const auto answer = platform::dialogs().ask(
            this, tr("Options"),
            tr("There are unsaved changes in the Options page. Do you want to save the changes now?"),
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes);
        if (answer == QMessageBox::Yes)
            on_saveButton_clicked();
        if (answer != QMessageBox::No && hasUnsavedChanges()) // the user stays, or saving failed
            return false;
    }
    emit closed();
    return true;
}

void DiskUsageOptionsForm::on_saveButton_clicked()
{
    const bool saved = saveScanSettings(edited());
    m_stored = saved ? edited() : loadScanSettings();
    editsChanged();
    if (saved)
        m_notice->showNotice(NoticeBar::Kind::Success, tr("Saved. The next scan uses these options."));
    else
        m_notice->showNotice(NoticeBar::Kind::Error,
                             tr("Windows refused to store the options; they are not saved."));
}

void DiskUsageOptionsForm::on_FileTypesEditButton_clicked()
{
    const int row = m_fileTypeTree->indexOfTopLevelItem(m_fileTypeTree->currentItem());
    if (row < 0)
        return;
    core::FileTypeTable others = m_fileTypes;
    const core::FileTypeCategory category = others[static_cast<std::size_t>(row)];
    others.erase(others.begin() + row);
    auto *dialog = new DiskUsageEditFileTypesDialog(category, std::move(others), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &DiskUsageEditFileTypesDialog::newValue, this,
            &DiskUsageOptionsForm::on_newFileTypeValue);
    dialog->open();
}

void DiskUsageOptionsForm::on_newFileTypeValue(const QString &displayText)
{
    QTreeWidgetItem *item = m_fileTypeTree->currentItem();
    const auto category = core::parseStoredFileType(QStringLiteral("1;") + displayText);
    if (!item || !category)
        return;
    core::FileTypeCategory &changed =
        m_fileTypes[static_cast<std::size_t>(m_fileTypeTree->indexOfTopLevelItem(item))];
    changed.extensions = category->extensions;
    item->setText(0, changed.displayText());
    editsChanged();
}

void DiskUsageOptionsForm::on_FileTypesRestoreButton_clicked()
{
    if (platform::dialogs().ask(this, tr("Confirm to restore"),
                                tr("Are you sure you want to restore the file types?")) != QMessageBox::Yes)
        return;
    m_loading = true;
    showFileTypes(core::defaultFileTypes());
    m_loading = false;
    editsChanged();
}

void DiskUsageOptionsForm::on_excludeOneDrivecheckBox_toggled(bool)
{
    editsChanged();
}

void DiskUsageOptionsForm::on_openOneDriveButton_clicked()
{
    if (!platform::shell().openFile(m_oneDrive))
        m_notice->showNotice(NoticeBar::Kind::Error, tr("%1 could not be opened.").arg(m_oneDrive));
}

void DiskUsageOptionsForm::on_excludeAddButton_clicked()
{
    QString folder =
        QDir::toNativeSeparators(platform::dialogs().chooseFolder(this, tr("Select folder to exclude...")));
    // A drive root keeps its separator; other folders are stored without one.
    if (folder.size() > 3 && folder.endsWith(QLatin1Char('\\')))
        folder.chop(1);
    if (folder.isEmpty() || m_excluded->topLevelItemCount() >= maxExcludedFolders)
        return;
    for (const core::ExcludedFolder &known : edited().excludedFolders) {
        if (known.path.compare(folder, Qt::CaseInsensitive) != 0)
            continue;
        m_notice->showNotice(NoticeBar::Kind::Info, tr("%1 is in the list already.").arg(folder));
        return;
    }
    m_loading = true;
    addExcludedRow({true, folder});
    m_loading = false;
    m_excluded->setCurrentItem(m_excluded->topLevelItem(m_excluded->topLevelItemCount() - 1));
    editsChanged();
}

void DiskUsageOptionsForm::on_excludeRemoveButton_clicked()
{
    delete m_excluded->currentItem();
    editsChanged();
}

void DiskUsageOptionsForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    m_checkedFolders.reset(); // the folders on disk may have changed
    checkSiblings();
}

// Only while the page is visible: this may spin up a disk or query a server.
void DiskUsageOptionsForm::checkSiblings()
{
    if (!isVisible())
        return;
    QStringList folders;
    for (const core::ExcludedFolder &folder : edited().excludedFolders)
        if (folder.enabled)
            folders.append(folder.path);
    if (m_excludeOneDrive->isChecked() && !m_oneDrive.isEmpty())
        folders.append(m_oneDrive);
    if (std::exchange(m_checkedFolders, folders) == folders)
        return;
    const auto disk = std::make_shared<platform::Win32Enumerator>();
    m_siblings.ask(
        [folders, find = m_findSiblings, disk](const core::Asking &asking) {
            return diskusage::siblingsOfAll(folders, find, *disk, asking.cancel());
        },
        [this](const QStringList &siblings) { showSiblings(siblings); },
        [this](const QString &) { showSiblings({}); }, [disk] { disk->interrupt(); });
}

void DiskUsageOptionsForm::showSiblings(const QStringList &siblings)
{
    const QString names = siblings.mid(0, maxNamedSiblings).join(QLatin1String(", "));
    const qsizetype more = siblings.size() - maxNamedSiblings;
    m_siblingNote->setText(
        more > 0 ? tr("Folders whose names begin the same are left out as well: %1 and %2 more")
                       .arg(names, QString::number(more))
                 : tr("Folders whose names begin the same are left out as well: %1").arg(names));
    m_siblingNote->setVisible(!siblings.isEmpty());
}
