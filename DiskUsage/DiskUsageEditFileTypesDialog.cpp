// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageEditFileTypesDialog.h"

#include "DiskUsage/DiskUsageAddFileTypesDialog.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/NoticeBar.h"
#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{

QIcon infoIcon()
{
    return controls::image("Info16");
}

} // namespace

DiskUsageEditFileTypesDialog::DiskUsageEditFileTypesDialog(core::FileTypeCategory category,
                                                           core::FileTypeTable others, QWidget *parent)
    : QDialog(parent),
      m_category(std::move(category)),
      m_others(std::move(others)),
      m_list(new QListWidget(this)),
      m_notice(new NoticeBar(this)),
      m_add(new QPushButton(controls::image("Add24"), tr("Add"), this)),
      m_delete(new QPushButton(controls::image("Delete24"), tr("Delete"), this)),
      m_save(new QPushButton(tr("Save"), this))
{
    setWindowTitle(tr("Edit File Types"));
    buildLayout();
    connectAll();
    for (const QString &extension : std::as_const(m_category.extensions))
        addRow(extension);
    m_list->setCurrentRow(0);
    enableButtons();
}

void DiskUsageEditFileTypesDialog::buildLayout()
{
    auto *title = new QLabel(tr("File Extensions for") + QLatin1Char(' ') + m_category.name, this);
    title->setObjectName(QStringLiteral("titleLabel"));
    title->setTextFormat(Qt::PlainText);
    title->setFont(theme::sectionTitle(font()));
    m_list->setObjectName(QStringLiteral("extensionListWidget"));
    m_list->setAccessibleName(title->text());
    m_list->setItemDelegate(new RowDelegate(m_list));
    m_add->setObjectName(QStringLiteral("AddButton"));
    m_delete->setObjectName(QStringLiteral("DeleteButton"));
    m_save->setObjectName(QStringLiteral("SaveButton"));
    m_save->setDefault(true);
    theme::makePrimary(m_save);
    auto *cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);

    auto *side = new QVBoxLayout;
    side->addWidget(m_add);
    side->addWidget(m_delete);
    side->addStretch();
    auto *middle = new QHBoxLayout;
    middle->addWidget(m_list, 1);
    middle->addLayout(side);
    auto *bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(m_save);
    bottom->addWidget(cancel);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(title);
    layout->addWidget(m_notice);
    layout->addLayout(middle, 1);
    layout->addLayout(bottom);
    resize(400, 380);
}

void DiskUsageEditFileTypesDialog::connectAll()
{
    connect(m_add, &QAbstractButton::clicked, this, &DiskUsageEditFileTypesDialog::on_AddButton_clicked);
    connect(m_delete, &QAbstractButton::clicked, this,
            &DiskUsageEditFileTypesDialog::on_DeleteButton_clicked);
    connect(m_save, &QAbstractButton::clicked, this, &DiskUsageEditFileTypesDialog::on_SaveButton_clicked);
    connect(m_list, &QListWidget::currentRowChanged, this, &DiskUsageEditFileTypesDialog::enableButtons);
    auto *remove = new QAction(this);
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    m_list->addAction(remove);
    connect(remove, &QAction::triggered, m_delete, &QAbstractButton::click);
}

void DiskUsageEditFileTypesDialog::enableButtons()
{
    m_delete->setEnabled(m_list->currentItem() != nullptr);
}

void DiskUsageEditFileTypesDialog::on_AddButton_clicked()
{
    auto *dialog = new DiskUsageAddFileTypesDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &DiskUsageAddFileTypesDialog::newExtension, this,
            &DiskUsageEditFileTypesDialog::on_newFileExtensionValue);
    dialog->open();
}

void DiskUsageEditFileTypesDialog::on_newFileExtensionValue(const QString &extension)
{
    if (m_category.extensions.contains(extension, Qt::CaseInsensitive)) {
        m_notice->showNotice(NoticeBar::Kind::Info, tr("%1 is in the list already.").arg(extension));
        return;
    }
    m_category.extensions.append(extension);
    addRow(extension);
    m_list->setCurrentRow(m_list->count() - 1);
    const QString note = sharedNote(extension);
    if (note.isEmpty())
        m_notice->hide();
    else
        m_notice->showNotice(NoticeBar::Kind::Info, note);
}

QString DiskUsageEditFileTypesDialog::sharedNote(const QString &extension) const
{
    for (const core::FileTypeCategory &other : m_others)
        if (other.extensions.contains(extension, Qt::CaseInsensitive))
            return tr("%1 is also in \"%2\"; such files count in both.").arg(extension, other.name);
    return {};
}

void DiskUsageEditFileTypesDialog::addRow(const QString &extension)
{
    auto *row = new QListWidgetItem(extension, m_list);
    const QString note = sharedNote(extension);
    if (note.isEmpty())
        return;
    row->setIcon(infoIcon());
    row->setToolTip(note);
    row->setData(Qt::AccessibleDescriptionRole, note);
}

void DiskUsageEditFileTypesDialog::on_DeleteButton_clicked()
{
    const int row = m_list->currentRow();
    if (row < 0 || platform::dialogs().ask(this, tr("Confirm to delete"),
                                           tr("Are you sure you want to delete")) != QMessageBox::Yes)
        return;
    m_category.extensions.removeAt(row);
    delete m_list->takeItem(row);
    enableButtons();
}

void DiskUsageEditFileTypesDialog::on_SaveButton_clicked()
{
    accept();
    emit newValue(m_category.displayText());
}
