// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/GroupsPage.h"

#include "FindDuplicate/groups/FindDuplicateMainResultThread.h"
#include "FindDuplicate/groups/FindDuplicateResultThread.h"
#include "FindDuplicate/groups/GroupListModel.h"
#include "FindDuplicate/groups/MemberActions.h"
#include "FindDuplicate/groups/MemberListModel.h"
#include "FindDuplicate/groups/ResultToolBar.h"
#include "platform/Shell.h"
#include "widgets/Controls.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTreeView.h"
#include "widgets/OpenSeveral.h"
#include "widgets/Theme.h"

#include <QAbstractItemView>
#include <QAction>
#include <QItemSelectionModel>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace duplicates
{

namespace
{

constexpr int readDelay = 30; // ms

} // namespace

GroupsPage::GroupsPage(QWidget *parent)
    : QWidget(parent),
      m_notice(new NoticeBar(this)),
      m_splitter(new QSplitter(Qt::Horizontal, this)),
      m_removal(new MemberRemoval(this)),
      m_jobs(this)
{
    m_notice->setObjectName(QStringLiteral("noticeBar"));
}

GroupsPage::~GroupsPage() = default;

void GroupsPage::build(const Parts &parts)
{
    m_removalText = parts.removal;
    m_groupModel = parts.groups;
    m_memberModel = parts.members;
    m_memberView = parts.memberView;
    m_groupModel->setParent(this);
    m_memberModel->setParent(this);
    m_toolBar = new ResultToolBar(parts.tools, this);
    m_list = new GroupList(m_groupModel, parts.groupDelegate, parts.groupTexts, this);
    m_memberView->setObjectName(QStringLiteral("mainTreeView"));
    m_memberView->setAccessibleName(parts.memberName);
    // Several for opening, showing and copying; but only a single file is removed at a time.
    m_memberView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_memberView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_memberView->setModel(m_memberModel);
    setFocusProxy(m_list);
    buildLayout(parts);
    buildActions();
    connectAll();
    enableTools();
}

void GroupsPage::buildLayout(const Parts &parts)
{
    m_splitter->addWidget(m_list);
    m_splitter->addWidget(parts.right);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setHandleWidth(theme::space);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setSizes(parts.sizes);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::space, theme::spaceSnug, theme::space, theme::space);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_toolBar);
    if (parts.note)
        layout->addWidget(parts.note);
    layout->addWidget(m_notice);
    layout->addWidget(m_splitter, 1);
}

void GroupsPage::buildActions()
{
    using controls::action;
    controls::shortcut(this, Qt::ALT | Qt::Key_Left, [this] { m_toolBar->back()->click(); });
    m_actions = new MemberActions(this, m_memberView, m_memberModel, m_toolBar);
    m_refreshAction = action(this, {"refreshAction", "Refresh24", tr("Refresh"), {}, QKeySequence::Refresh},
                             [this] { refresh(); });
    controls::shortcut(this, QKeySequence::Find, [this] { m_list->focusSearch(); });
    m_openBin = new QAction(tr("Open Recycle Bin"), this);
    connect(m_openBin, &QAction::triggered, this, [this] {
        if (!platform::shell().openRecycleBin())
            showNotice(NoticeBar::Kind::Warning, tr("The recycle bin could not be opened."));
    });
    m_cancelCheck = new QAction(tr("Cancel"), this);
    connect(m_cancelCheck, &QAction::triggered, m_removal, &MemberRemoval::requestStop);
}

void GroupsPage::connectAll()
{
    connect(m_toolBar->back(), &QAbstractButton::clicked, this, &GroupsPage::backToMain);
    connect(m_actions, &MemberActions::openRequested, this, &GroupsPage::on_openButton_clicked);
    connect(m_actions, &MemberActions::explorerRequested, this, &GroupsPage::on_explorerButton_clicked);
    connect(m_actions, &MemberActions::recycleRequested, this, &GroupsPage::on_RecycleBinButton_clicked);
    connect(m_list, &GroupList::currentGroupChanged, this, &GroupsPage::showGroup);
    connect(m_list->view()->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &GroupsPage::onMainTreeItemChanged);
    connect(m_list, &GroupList::menuAboutToShow, this, &GroupsPage::showGroupMenu);
    connect(m_list, &GroupList::told, this, &GroupsPage::tell);
    connect(m_memberView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &GroupsPage::onItemChanged);
    connect(m_memberView, &QWidget::customContextMenuRequested, this, [this](const QPoint &where) {
        m_actions->showMenu(where, [this](FLPopupMenu *menu) { fillMemberMenu(menu); });
    });
    m_readLater.setSingleShot(true);
    m_readLater.setInterval(readDelay);
    connect(&m_readLater, &QTimer::timeout, this, &GroupsPage::readGroup);
    // The notice stays enabled: slow disk checks are reported there and can be cancelled.
    connect(m_removal, &MemberRemoval::checkTakesLong, this,
            [this] { showNotice(NoticeBar::Kind::Info, tr("Looking at the file ..."), m_cancelCheck); });
    connect(m_removal, &MemberRemoval::checkEnded, m_notice, &QWidget::hide);
    connect(m_removal, &MemberRemoval::finished, this, &GroupsPage::afterRemoval);
}

void GroupsPage::setGroups(std::shared_ptr<FileGroups> groups, const QString &root)
{
    m_firsts.forget();
    m_reading.forget();
    m_readLater.stop();
    showMembers(-1); // of the previous groups
    m_groups = std::move(groups);
    m_actions->setGroups(m_groups);
    m_root = root;
    m_toolBar->setTitle(root);
    m_notice->hide();
    m_list->setGroups(m_groups, root, [this](int group) { return freeable(group); });
    enableTools();
}

void GroupsPage::readReport()
{
    checkFirstFiles(true);
}

void GroupsPage::checkFirstFiles(bool report)
{
    auto *worker = new FindDuplicateMainResultThread(m_groups);
    if (report)
        connect(worker, &FindDuplicateMainResultThread::processFinish, this,
                &GroupsPage::onMainResultProcessFinish);
    connect(worker, &FindDuplicateMainResultThread::firstFilesChecked, m_groupModel,
            &GroupListModel::setFirstFilesExist);
    connect(worker, &core::WorkerThread::done, this, [this, worker] {
        if (!worker->error().isEmpty())
            showNotice(NoticeBar::Kind::Warning,
                       tr("Not all groups could be checked. %1").arg(worker->error()));
    });
    m_firsts.run(worker);
}

void GroupsPage::onMainResultProcessFinish()
{
    m_list->selectRow(0);
    emit resultReady();
    setFocus();
}

void GroupsPage::showTotals(const QString &text)
{
    m_toolBar->setTotals(text);
}

void GroupsPage::onMainTreeItemChanged(const QItemSelection &, const QItemSelection &)
{
    showGroup();
}

// Members are listed at once. The facts from the disk follow, which may take long.
void GroupsPage::showGroup()
{
    const int group = m_list->currentGroup();
    if (group == m_memberModel->groupIndex())
        return;
    showMembers(group);
    memberSelected();
    m_readLater.start();
}

void GroupsPage::readGroup()
{
    const int group = m_memberModel->groupIndex();
    if (group < 0) {
        m_reading.forget();
        return;
    }
    auto *worker = new FindDuplicateResultThread(m_root, m_groups->files(group), group);
    connect(worker, &FindDuplicateResultThread::processFinish, this, &GroupsPage::onProcessFinish);
    m_reading.run(worker);
}

void GroupsPage::onProcessFinish()
{
    auto *worker = m_reading.current<FindDuplicateResultThread>();
    if (m_memberModel->groupIndex() != worker->groupIndex())
        return;
    if (!worker->error().isEmpty())
        showNotice(NoticeBar::Kind::Warning,
                   tr("The files of this group could not be checked. %1").arg(worker->error()));
    else
        showFacts(worker->takeMembers());
}

void GroupsPage::showFacts(std::vector<MemberFacts> facts)
{
    if (facts.empty())
        return;
    const int group = m_memberModel->groupIndex();
    m_groupModel->setFirstFilesExist(group, {facts.front().mark.exists});
    m_memberModel->setFacts(std::move(facts));
    factsChanged(group);
    enableTools();
}

// Checks the disk again: the members of the current group, and the first file of every other.
void GroupsPage::refresh()
{
    const int group = m_memberModel->groupIndex();
    if (isRemoving() || group < 0)
        return;
    forgetFindings(group);
    m_memberModel->membersChanged();
    m_groupModel->groupChanged(group);
    groupChanged(group);
    enableTools();
    m_readLater.start();
    checkFirstFiles(false);
}

void GroupsPage::onItemChanged(const QItemSelection &, const QItemSelection &)
{
    memberSelected();
}

void GroupsPage::enableTools()
{
    m_actions->enable(isRemoving(), isBusy());
}

void GroupsPage::on_openButton_clicked()
{
    tell(openFiles(m_actions->paths()));
}

void GroupsPage::on_explorerButton_clicked()
{
    tell(revealFiles(m_actions->paths()));
}

void GroupsPage::tell(const OpenedSeveral &opened)
{
    if (!opened.notice.isEmpty())
        showNotice(opened.failed ? NoticeBar::Kind::Warning : NoticeBar::Kind::Info, opened.notice);
}

void GroupsPage::showGroupMenu(FLPopupMenu *menu)
{
    fillGroupMenu(menu);
    menu->addWithShortcut(m_refreshAction);
}

void GroupsPage::showNotice(NoticeBar::Kind kind, const QString &text, QAction *action)
{
    m_notice->showNotice(kind, text, action);
}

// The question has no owner window, so the page behind it must be disabled here.
void GroupsPage::setUsable(bool usable)
{
    m_toolBar->setEnabled(usable);
    m_splitter->setEnabled(usable);
}

void GroupsPage::on_RecycleBinButton_clicked()
{
    const int member = isBusy() ? -1 : m_actions->removable();
    if (member < 0)
        return;
    // The groups are not changed while the question is open. Pending changes are applied afterwards.
    m_list->hold();
    m_readLater.stop();
    m_reading.forget();
    m_notice->hide();
    m_removed = {m_memberModel->groupIndex(), member};
    RemovalRequest request{m_root, m_groups->files(m_removed.group), static_cast<std::size_t>(member),
                           m_memberModel->facts(member).value_or(MemberFacts()), contents()};
    const FileRecord shown = request.file();
    m_jobs.begin({.busyText = m_removalText}, [this] { m_removal->requestStop(); });
    setUsable(false);
    m_removal->start(std::move(request), [this, shown] {
        return m_memberModel->groupIndex() == m_removed.group &&
               m_groups->file(m_removed.group, m_removed.member) == shown;
    });
}

void GroupsPage::afterRemoval(const RemovalResult &result)
{
    using Outcome = RemovalResult::Outcome;
    if (!result.notice.isEmpty())
        m_jobs.keepOpen();
    m_jobs.end();
    const bool moved = result.outcome == Outcome::Moved;
    const bool gone = moved || result.outcome == Outcome::Untraced;
    const bool marked = moved || (marksFailures() && result.outcome != Outcome::LeftAlone);
    const bool shown = m_memberModel->groupIndex() == m_removed.group;
    if (shown && gone)
        m_memberModel->setGone(m_removed.member);
    if (shown && !result.members.empty())
        showFacts(result.members);
    if (marked)
        markRemoved(result.outcome);
    setUsable(true);
    enableTools();
    m_memberView->setFocus();
    if (result.members.empty() || !shown)
        m_readLater.start();
    m_list->release();
    if (moved)
        showNotice(NoticeBar::Kind::Info,
                   tr("%1 was moved to the recycle bin.")
                       .arg(m_groups->file(m_removed.group, m_removed.member).fullPath()),
                   m_openBin);
    else if (!result.notice.isEmpty() && !(marked && result.outcome == Outcome::Failed)) // the row shows it
        showNotice(NoticeBar::Kind::Warning, result.notice);
}

void GroupsPage::markRemoved(RemovalResult::Outcome outcome)
{
    FileRecord &file = m_groups->file(m_removed.group, m_removed.member);
    file.checked = true;
    file.moved = outcome == RemovalResult::Outcome::Moved;
    file.untraced = outcome == RemovalResult::Outcome::Untraced;
    if (m_memberModel->groupIndex() == m_removed.group)
        m_memberModel->membersChanged();
    if ((file.moved || file.untraced) && m_removed.member == 0)
        m_groupModel->setFirstFilesExist(m_removed.group, {false});
    m_groupModel->groupChanged(m_removed.group);
    groupChanged(m_removed.group);
}

} // namespace duplicates
