// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DiskUsageOptionsForm.h"

#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTabWidget.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

using controls::image;

namespace
{

// A list with its buttons beside it.
QHBoxLayout *beside(QWidget *list, const QList<QPushButton *> &buttons)
{
    auto *column = new QVBoxLayout;
    column->setSpacing(theme::spaceSnug);
    for (QPushButton *button : buttons)
        column->addWidget(button);
    column->addStretch();
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::space);
    row->addWidget(list, 1);
    row->addLayout(column);
    return row;
}

} // namespace

DiskUsageOptionsForm::DiskUsageOptionsForm(QWidget *parent)
    : DiskUsageOptionsForm(diskusage::siblingsLeftOut, parent)
{
}

DiskUsageOptionsForm::DiskUsageOptionsForm(diskusage::SiblingFinder siblings, QWidget *parent)
    : QWidget(parent),
      m_back(new QToolButton(this)),
      m_tabs(new FLTabWidget(this)),
      m_save(new QPushButton(image("Save24"), tr("Save"), this)),
      m_fileTypeTree(new FLTreeWidget(this)),
      m_edit(new QPushButton(image("Edit24"), tr("Edit"), this)),
      m_restore(new QPushButton(image("Refresh24"), tr("Restore"), this)),
      m_excludeOneDrive(new QCheckBox(tr("Exclude OneDrive Folder"), this)),
      m_oneDriveLabel(new ElidedLabel(this, Qt::ElideMiddle)),
      m_openOneDrive(new QPushButton(image("FolderOpen24"), tr("&Open OneDrive Folder"), this)),
      m_excluded(new FLTreeWidget(this)),
      m_excludeAdd(new QPushButton(image("Add24"), tr("&Add"), this)),
      m_excludeRemove(new QPushButton(image("Delete24"), tr("&Remove"), this)),
      m_siblingNote(new ElidedLabel(this, Qt::ElideMiddle)),
      m_notice(new NoticeBar(this)),
      m_findSiblings(std::move(siblings))
{
    m_tabs->addTab(buildFileTypesTab(), tr("File Types"));
    m_tabs->addTab(buildExcludeTab(), tr("Exclude Folder"));
    buildOneDrive();
    buildLayout();
    connectAll();
    load();
}

QWidget *DiskUsageOptionsForm::buildFileTypesTab()
{
    auto *tab = new QWidget(this);
    tab->setObjectName(QStringLiteral("fileTypesTab"));
    auto *hint =
        new QLabel(tr("Files are sorted into these types by their extensions. A type that is not checked is "
                      "not searched for."),
                   tab);
    hint->setWordWrap(true);
    theme::makeMuted(hint);
    m_fileTypeTree->setObjectName(QStringLiteral("fileTypesTreeWidget"));
    m_fileTypeTree->setAccessibleName(tr("File Types"));
    m_fileTypeTree->setHeaderHidden(true);
    m_fileTypeTree->setRootIsDecorated(false);
    m_fileTypeTree->setTextElideMode(Qt::ElideRight);
    m_edit->setObjectName(QStringLiteral("FileTypesEditButton"));
    m_restore->setObjectName(QStringLiteral("FileTypesRestoreButton"));
    auto *layout = new QVBoxLayout(tab);
    layout->setContentsMargins(0, theme::space, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(hint);
    layout->addLayout(beside(m_fileTypeTree, {m_edit, m_restore}), 1);
    return tab;
}

QWidget *DiskUsageOptionsForm::buildExcludeTab()
{
    auto *tab = new QWidget(this);
    tab->setObjectName(QStringLiteral("excludeFolderTab"));
    auto *title = new QLabel(tr("Folders to Exclude (Max 10)"), tab);
    title->setFont(theme::sectionTitle(font()));
    m_excluded->setObjectName(QStringLiteral("excludeTreeWidget"));
    m_excluded->setAccessibleName(title->text());
    m_excluded->setHeaderHidden(true);
    m_excluded->setRootIsDecorated(false);
    m_excluded->setPlaceholder(tr("No folder is left out of the scans. \"Add\" chooses one."));
    m_excludeAdd->setObjectName(QStringLiteral("excludeAddButton"));
    m_excludeRemove->setObjectName(QStringLiteral("excludeRemoveButton"));
    m_siblingNote->setObjectName(QStringLiteral("siblingNoteLabel"));
    m_siblingNote->hide();

    auto *oneDrive = new QHBoxLayout;
    oneDrive->setSpacing(theme::space);
    oneDrive->addWidget(m_excludeOneDrive);
    oneDrive->addWidget(m_oneDriveLabel, 1);
    oneDrive->addWidget(m_openOneDrive);
    auto *layout = new QVBoxLayout(tab);
    layout->setContentsMargins(0, theme::space, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(oneDrive);
    layout->addSpacing(theme::spaceSnug);
    layout->addWidget(title);
    layout->addLayout(beside(m_excluded, {m_excludeAdd, m_excludeRemove}), 1);
    layout->addWidget(m_siblingNote);
    return tab;
}

void DiskUsageOptionsForm::buildOneDrive()
{
    m_excludeOneDrive->setObjectName(QStringLiteral("excludeOneDrivecheckBox"));
    m_excludeOneDrive->setIcon(image("FolderCloud16"));
    m_oneDriveLabel->setObjectName(QStringLiteral("oneDriveLabel"));
    theme::makeMuted(m_oneDriveLabel);
    m_openOneDrive->setObjectName(QStringLiteral("openOneDriveButton"));
}

void DiskUsageOptionsForm::buildLayout()
{
    m_back->setObjectName(QStringLiteral("optionsBackButton"));
    m_back->setIcon(image("ArrowLeft24"));
    m_back->setIconSize({24, 24});
    m_back->setAutoRaise(true);
    m_back->setFocusPolicy(Qt::TabFocus);
    m_back->setToolTip(tr("Back to the start page (Alt+Left)"));
    m_back->setAccessibleName(tr("Back"));
    auto *title = new QLabel(tr("Options"), this);
    title->setFont(theme::sectionTitle(font()));
    m_save->setObjectName(QStringLiteral("saveButton"));
    m_save->setShortcut(QKeySequence::Save);
    theme::makePrimary(m_save);
    m_tabs->setObjectName(QStringLiteral("optionsTabWidget"));

    auto *header = new QHBoxLayout;
    header->setSpacing(theme::spaceSnug);
    header->addWidget(m_back);
    header->addWidget(title, 1);
    header->addWidget(m_save);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::space, theme::space, theme::space);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(header);
    layout->addWidget(m_notice);
    layout->addWidget(m_tabs, 1);
}

void DiskUsageOptionsForm::connectAll()
{
    connect(m_back, &QAbstractButton::clicked, this, &DiskUsageOptionsForm::tryClose);
    connect(m_save, &QAbstractButton::clicked, this, &DiskUsageOptionsForm::on_saveButton_clicked);
    connect(m_edit, &QAbstractButton::clicked, this, &DiskUsageOptionsForm::on_FileTypesEditButton_clicked);
    connect(m_restore, &QAbstractButton::clicked, this,
            &DiskUsageOptionsForm::on_FileTypesRestoreButton_clicked);
    connect(m_excludeOneDrive, &QAbstractButton::toggled, this,
            &DiskUsageOptionsForm::on_excludeOneDrivecheckBox_toggled);
    connect(m_openOneDrive, &QAbstractButton::clicked, this,
            &DiskUsageOptionsForm::on_openOneDriveButton_clicked);
    connect(m_excludeAdd, &QAbstractButton::clicked, this,
            &DiskUsageOptionsForm::on_excludeAddButton_clicked);
    connect(m_excludeRemove, &QAbstractButton::clicked, this,
            &DiskUsageOptionsForm::on_excludeRemoveButton_clicked);
    for (FLTreeWidget *list : {m_fileTypeTree, m_excluded}) {
        connect(list, &QTreeWidget::itemChanged, this, &DiskUsageOptionsForm::editsChanged);
        connect(list, &QTreeWidget::currentItemChanged, this, &DiskUsageOptionsForm::editsChanged);
    }
    connect(m_fileTypeTree, &QTreeWidget::itemDoubleClicked, m_edit, &QAbstractButton::click);
    const auto key = [](QWidget *owner, const QKeySequence &sequence, Qt::ShortcutContext context,
                        QAbstractButton *button) {
        auto *action = new QAction(owner);
        action->setShortcut(sequence);
        action->setShortcutContext(context);
        owner->addAction(action);
        connect(action, &QAction::triggered, button, &QAbstractButton::click);
    };
    key(this, Qt::ALT | Qt::Key_Left, Qt::WidgetWithChildrenShortcut, m_back);
    key(m_fileTypeTree, Qt::Key_F2, Qt::WidgetShortcut, m_edit);
    key(m_excluded, QKeySequence::Delete, Qt::WidgetShortcut, m_excludeRemove);
}
