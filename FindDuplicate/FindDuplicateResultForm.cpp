// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/FileIcons.h"
#include "FindDuplicate/GroupModel.h"
#include "FindDuplicate/MemberModel.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "widgets/Controls.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTreeView.h"
#include "widgets/FileRowDelegate.h"
#include "widgets/Theme.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

using duplicates::DuplicateGroup;
using duplicates::FileIcons;
using duplicates::FileRecord;
using duplicates::GroupModel;
using duplicates::MemberModel;

namespace
{

constexpr int progressTick = 50; // ms
constexpr int rowLines = 3;      // below the title; the last one shows the badges

} // namespace

FindDuplicateResultForm::FindDuplicateResultForm(const QString &root, std::shared_ptr<Groups> groups,
                                                 int foldersUnread, QWidget *parent)
    : GroupsPage(parent),
      m_root(root),
      m_foldersUnread(foldersUnread),
      m_groups(std::move(groups)),
      m_groupModel(new GroupModel(this)),
      m_memberModel(new MemberModel(this)),
      m_memberTree(new FLTreeView(this)),
      m_groupTitle(new ElidedLabel(this)),
      m_compare(
          controls::pushButton(this, {"compareButton", "Compare24", tr("Compare contents"),
                                      tr("Read the files of this group and compare them byte by byte")})),
      m_compareBar(new QProgressBar(this)),
      m_compareCancel(controls::pushButton(this, {"compareCancelButton", "", tr("Cancel")}))
{
    m_memberTree->setItemDelegate(new FileRowDelegate(rowLines, m_memberTree));
    m_memberTree->setHeaderHidden(true);
    m_memberTree->setRootIsDecorated(false);
    m_compareTicker.setInterval(progressTick);
    connect(&m_compareTicker, &QTimer::timeout, this, &FindDuplicateResultForm::showCompareProgress);
    connect(m_compare, &QAbstractButton::clicked, this, &FindDuplicateResultForm::compareContents);
    connect(m_compareCancel, &QAbstractButton::clicked, this, &FindDuplicateResultForm::cancelComparison);
    build({.groups = m_groupModel,
           .groupDelegate = new FileRowDelegate(rowLines),
           .groupTexts = {tr("Groups of duplicates"),
                          tr("Lists the groups with a file of that name or folder"), tr("Most files first")},
           .members = m_memberModel,
           .memberView = m_memberTree,
           .memberName = tr("Files of the group"),
           .tools = {tr("Open the selected files with their programs; a program runs (Ctrl+O)"),
                     tr("Show the selected files in their folders (Ctrl+E)"),
                     tr("Ask, and move this one file to the recycle bin (Delete in the list of files)")},
           .removal = tr("the removal of a file"),
           .note = buildNote(),
           .right = buildRight(),
           .sizes = {450, 550}});
}

FindDuplicateResultForm::~FindDuplicateResultForm() = default;

QWidget *FindDuplicateResultForm::buildNote()
{
    auto *note = new QLabel(tr("Only type, size and last change were compared, not the contents: \"Compare "
                               "contents\" tells whether the files of a group really are the same."),
                            this);
    note->setObjectName(QStringLiteral("metadataNoteLabel"));
    note->setWordWrap(true);
    theme::makeMuted(note);
    return note;
}

QWidget *FindDuplicateResultForm::buildRight()
{
    m_groupTitle->setObjectName(QStringLiteral("groupTitleLabel"));
    m_groupTitle->setFont(theme::sectionTitle(font()));
    m_compareBar->setObjectName(QStringLiteral("compareProgressBar"));
    m_compareBar->setRange(0, 1000);
    m_compareBar->setTextVisible(false);
    m_compareBar->setFixedHeight(2 * theme::barHeight);
    m_compareBar->setAccessibleName(tr("Progress of the comparison"));
    m_compareBar->hide();
    m_compareCancel->hide();

    auto *right = new QWidget(this);
    auto *line = new QHBoxLayout;
    line->setSpacing(theme::spaceSnug);
    line->addWidget(m_groupTitle, 1);
    line->addWidget(m_compareBar, 1);
    line->addWidget(m_compareCancel);
    line->addWidget(m_compare);
    auto *column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::spaceSnug);
    column->addLayout(line);
    column->addWidget(m_memberTree, 1);
    return right;
}

bool FindDuplicateResultForm::start()
{
    if (m_groups->empty())
        return false;
    m_groupModel->setGroups(m_groups.get());
    list()->view()->showColumns({GroupModel::Text});
    list()->view()->setStretchColumn(GroupModel::Text, 0);
    m_memberTree->showColumns({MemberModel::Text});
    m_memberTree->setStretchColumn(MemberModel::Text, 0);
    for (FLTreeView *view : {list()->view(), m_memberTree})
        connect(&FileIcons::instance(), &FileIcons::arrived, view->viewport(), qOverload<>(&QWidget::update));
    setGroups(std::make_shared<duplicates::GroupsOf<DuplicateGroup>>(m_groups), m_root);
    m_statistics = duplicates::statisticsOf(*m_groups);
    showSummary();
    readReport();
    return true;
}

void FindDuplicateResultForm::showSummary()
{
    const quint64 bytes = m_spareBytes.corrected(m_statistics.freeableBytes);
    QString text =
        tr("%1 with %2; %3 free when one of each is kept")
            .arg(core::countText(m_statistics.groups, tr("1 group"), tr("%1 groups")),
                 core::countText(m_statistics.files, tr("1 file"), tr("%1 files")), core::sizeText(bytes));
    if (m_statistics.removedFiles > 0)
        text +=
            tr("; %1 moved to the recycle bin (%2)")
                .arg(QString::number(m_statistics.removedFiles), core::sizeText(m_statistics.removedBytes));
    if (m_foldersUnread > 0)
        text += QLatin1String("; ") + core::countText(m_foldersUnread, tr("1 folder could not be read"),
                                                      tr("%1 folders could not be read"));
    showTotals(text);
}

void FindDuplicateResultForm::showMembers(int group)
{
    m_memberModel->setGroup(group < 0 ? nullptr : &groupAt(group), group);
    m_memberModel->setContents(m_contents.value(group));
    showGroupTitle();
    m_memberTree->selectionModel()->setCurrentIndex(m_memberModel->index(0, MemberModel::Text),
                                                    QItemSelectionModel::ClearAndSelect |
                                                        QItemSelectionModel::Rows);
}

void FindDuplicateResultForm::showGroupTitle()
{
    const int group = m_memberModel->groupIndex();
    if (group < 0) {
        m_groupTitle->setText({});
        return;
    }
    const QString left = core::countText(duplicates::filesLeft(groupAt(group)), tr("1 file"), tr("%1 files"));
    m_groupTitle->setText(tr("%1 of %2 each").arg(left, core::sizeText(groupAt(group).size)));
}

quint64 FindDuplicateResultForm::freeable(int group) const
{
    return m_spareBytes.of(group, duplicates::freeableBytes(groupAt(group)));
}

void FindDuplicateResultForm::factsChanged(int group)
{
    if (!m_memberModel->allFacts().empty())
        m_spareBytes.set(group, duplicates::freeableBytes(groupAt(group)),
                         duplicates::spareBytes(groupAt(group).size, m_memberModel->allFacts(),
                                                m_memberModel->contents()));
    showSummary();
}

void FindDuplicateResultForm::groupChanged(int group)
{
    m_statistics = duplicates::statisticsOf(*m_groups);
    m_spareBytes.forget(group);
    if (group == m_memberModel->groupIndex()) {
        factsChanged(group);
        showGroupTitle();
    } else {
        showSummary();
    }
}

void FindDuplicateResultForm::forgetFindings(int group)
{
    m_contents.remove(group);
    m_memberModel->setContents({});
    // Files that could not be moved may be tried again.
    for (FileRecord &file : (*m_groups)[static_cast<std::size_t>(group)].members)
        file.checked = file.moved;
}

duplicates::GroupContents FindDuplicateResultForm::contents() const
{
    return m_memberModel->contents();
}

const DuplicateGroup &FindDuplicateResultForm::groupAt(int group) const
{
    return (*m_groups)[static_cast<std::size_t>(group)];
}

void FindDuplicateResultForm::enableTools()
{
    GroupsPage::enableTools();
    m_compare->setEnabled(m_memberModel->rowCount() > 0 && !isBusy());
}

void FindDuplicateResultForm::fillMemberMenu(FLPopupMenu *menu)
{
    menu->addSeparator();
    fillGroupMenu(menu);
}

void FindDuplicateResultForm::fillGroupMenu(FLPopupMenu *menu)
{
    QAction *compare = menu->addAction(controls::image("Compare24"), m_compare->text(), this,
                                       &FindDuplicateResultForm::compareContents);
    compare->setEnabled(m_compare->isEnabled());
}
