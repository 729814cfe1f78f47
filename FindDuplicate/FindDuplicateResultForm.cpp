// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/GroupModel.h"
#include "FindDuplicate/MemberModel.h"
#include "FindDuplicate/engine/ListedGroups.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/OpenSeveral.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QIcon>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>
#include <utility>

using duplicates::DuplicateGroup;
using duplicates::FileRecord;

FindDuplicateResultForm::~FindDuplicateResultForm() = default;

bool FindDuplicateResultForm::start()
{
    if (m_groups->empty())
        return false;
    auto *worker = new FindDuplicateMainResultThread(m_groups);
    connect(worker, &FindDuplicateMainResultThread::processFinish, this,
            &FindDuplicateResultForm::onMainResultProcessFinish);
    checkFirstFiles(worker);
    return true;
}

void FindDuplicateResultForm::checkFirstFiles(FindDuplicateMainResultThread *worker)
{
    connect(worker, &FindDuplicateMainResultThread::firstFilesChecked, m_groupModel,
            &GroupModel::setFirstFilesExist);
    connect(worker, &core::WorkerThread::done, this, [this, worker] {
        if (!worker->error().isEmpty())
            showNotice(tr("Not all groups could be checked. %1").arg(worker->error()));
    });
    m_firsts.run(worker);
}

void FindDuplicateResultForm::onMainResultProcessFinish()
{
    m_statistics = duplicates::statisticsOf(*m_groups);
    m_groupModel->setGroups(m_groups.get(), m_firsts.current<FindDuplicateMainResultThread>()->takeListed());
    m_groupTree->showColumns({GroupModel::Text});
    m_groupTree->setStretchColumn(GroupModel::Text, 0);
    m_memberTree->showColumns({MemberModel::Text});
    m_memberTree->setStretchColumn(MemberModel::Text, 0);
    showSummary();
    selectGroupRow(0);
    emit resultReady();
    m_groupTree->setFocus();
}

void FindDuplicateResultForm::showSummary()
{
    // Where the disk was asked, other names of a file and files that differ are known.
    quint64 freeable = m_statistics.freeableBytes;
    for (auto known = m_spareBytes.cbegin(); known != m_spareBytes.cend(); ++known)
        freeable += known.value() - duplicates::freeableBytes(groupAt(known.key()));
    QString text =
        tr("%1 with %2; %3 free when one of each is kept")
            .arg(core::countText(m_statistics.groups, tr("1 group"), tr("%1 groups")),
                 core::countText(m_statistics.files, tr("1 file"), tr("%1 files")), core::sizeText(freeable));
    if (m_statistics.removedFiles > 0)
        text +=
            tr("; %1 moved to the recycle bin (%2)")
                .arg(QString::number(m_statistics.removedFiles), core::sizeText(m_statistics.removedBytes));
    if (m_foldersUnread > 0)
        text += QLatin1String("; ") + core::countText(m_foldersUnread, tr("1 folder could not be read"),
                                                      tr("%1 folders could not be read"));
    m_summary->setText(text);
}

void FindDuplicateResultForm::showListed()
{
    const int group = selectedGroup();
    m_groupModel->setListed(duplicates::listedGroups(
        *m_groups, m_root, m_search->text().trimmed(),
        static_cast<duplicates::GroupOrder>(m_order->currentData().toInt()), &duplicates::freeableBytes));
    const int row = qMax(0, m_groupModel->rowOf(group));
    if (row < m_groupModel->rowCount()) {
        selectGroupRow(row);
        m_groupTree->scrollTo(m_groupModel->index(row, 0));
    } else {
        showGroup(); // nothing is listed: no members either
    }
}

void FindDuplicateResultForm::refresh()
{
    if (isRemoving() || m_memberModel->groupIndex() < 0)
        return;
    const int group = m_memberModel->groupIndex();
    m_contents.remove(group);
    m_spareBytes.remove(group);
    // What could not be moved may be tried again.
    for (FileRecord &file : groupAt(group).members)
        file.checked = file.moved;
    m_memberModel->setContents({});
    m_groupModel->groupChanged(group);
    showSummary();
    enableTools();
    m_readLater.start();
    checkFirstFiles(new FindDuplicateMainResultThread(m_groups));
}

int FindDuplicateResultForm::selectedGroup() const
{
    const QItemSelectionModel *selection = m_groupTree->selectionModel();
    if (selection->isSelected(selection->currentIndex()))
        return m_groupModel->groupAt(selection->currentIndex().row());
    const std::vector<int> groups = selectedGroups();
    return groups.empty() ? -1 : groups.front();
}

// Whatever keys are held down: the view itself would add to a selection with Ctrl or Shift.
void FindDuplicateResultForm::selectGroupRow(int row)
{
    m_groupTree->selectionModel()->setCurrentIndex(
        m_groupModel->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

std::vector<int> FindDuplicateResultForm::selectedGroups() const
{
    QModelIndexList rows = m_groupTree->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<int> groups;
    for (const QModelIndex &row : std::as_const(rows))
        groups.push_back(m_groupModel->groupAt(row.row()));
    return groups;
}

void FindDuplicateResultForm::onMainTreeItemChanged(const QItemSelection &, const QItemSelection &)
{
    showGroup();
}

// Its members are listed at once. What the disk says about them follows, which may take it long.
void FindDuplicateResultForm::showGroup()
{
    const int index = selectedGroup();
    if (index != m_memberModel->groupIndex()) {
        m_memberModel->setGroup(index < 0 ? nullptr : &groupAt(index), index);
        m_memberModel->setContents(m_contents.value(index));
        showGroupTitle();
        m_memberTree->selectionModel()->setCurrentIndex(m_memberModel->index(0, MemberModel::Text),
                                                        QItemSelectionModel::ClearAndSelect |
                                                            QItemSelectionModel::Rows);
        enableTools();
    }
    m_readLater.start();
}

void FindDuplicateResultForm::showGroupTitle()
{
    const int index = m_memberModel->groupIndex();
    if (index < 0) {
        m_groupTitle->setText({});
        return;
    }
    const QString left = core::countText(duplicates::filesLeft(groupAt(index)), tr("1 file"), tr("%1 files"));
    m_groupTitle->setText(tr("%1 of %2 each").arg(left, core::sizeText(groupAt(index).size)));
}

void FindDuplicateResultForm::readGroup()
{
    const int group = m_memberModel->groupIndex();
    if (group < 0) {
        m_reading.forget();
        return;
    }
    auto *worker = new FindDuplicateResultThread(m_root, groupAt(group), group);
    connect(worker, &FindDuplicateResultThread::processFinish, this,
            &FindDuplicateResultForm::onProcessFinish);
    m_reading.run(worker);
}

void FindDuplicateResultForm::onProcessFinish()
{
    auto *worker = m_reading.current<FindDuplicateResultThread>();
    if (m_memberModel->groupIndex() != worker->groupIndex())
        return;
    if (!worker->error().isEmpty())
        showNotice(tr("The files of this group could not be checked. %1").arg(worker->error()));
    else
        showFacts(worker->takeMembers());
}

void FindDuplicateResultForm::showFacts(std::vector<duplicates::MemberFacts> facts)
{
    m_memberModel->setFacts(std::move(facts));
    noteSpareBytes();
}

void FindDuplicateResultForm::noteSpareBytes()
{
    if (m_memberModel->allFacts().empty())
        return;
    const int group = m_memberModel->groupIndex();
    m_spareBytes.insert(group, duplicates::spareBytes(groupAt(group).size, m_memberModel->allFacts(),
                                                      m_memberModel->contents()));
    showSummary();
}

void FindDuplicateResultForm::onItemChanged(const QItemSelection &, const QItemSelection &)
{
    enableTools();
}

QList<FindDuplicateResultForm::Selected> FindDuplicateResultForm::selectedMembers() const
{
    QModelIndexList rows = m_memberTree->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QList<Selected> members;
    for (const QModelIndex &row : std::as_const(rows)) {
        const auto number = [&](int column) { return row.siblingAtColumn(column).data().toInt(); };
        members.append({number(MemberModel::GroupIndex), number(MemberModel::MemberIndex)});
    }
    return members;
}

QStringList FindDuplicateResultForm::selectedPaths() const
{
    QStringList paths;
    for (const Selected &member : selectedMembers())
        if (!record(member).checked)
            paths.append(record(member).fullPath());
    return paths;
}

std::optional<FindDuplicateResultForm::Selected> FindDuplicateResultForm::removableMember() const
{
    const QList<Selected> members = selectedMembers();
    if (members.size() != 1 || record(members.first()).checked)
        return std::nullopt;
    return members.first();
}

const DuplicateGroup &FindDuplicateResultForm::groupAt(int group) const
{
    return (*m_groups)[static_cast<std::size_t>(group)];
}

DuplicateGroup &FindDuplicateResultForm::groupAt(int group)
{
    return (*m_groups)[static_cast<std::size_t>(group)];
}

const FileRecord &FindDuplicateResultForm::record(const Selected &member) const
{
    return groupAt(member.group).members[static_cast<std::size_t>(member.member)];
}

void FindDuplicateResultForm::enableTools()
{
    const QList<Selected> members = selectedMembers();
    const bool offered =
        !isRemoving() && std::any_of(members.cbegin(), members.cend(),
                                     [this](const auto &member) { return !record(member).checked; });
    m_open->setEnabled(offered);
    m_explorer->setEnabled(offered);
    m_recycleBin->setEnabled(offered && members.size() == 1 && !isBusy());
    m_compare->setEnabled(m_memberModel->rowCount() > 0 && !isBusy());
}

void FindDuplicateResultForm::on_openButton_clicked()
{
    tell(openFiles(selectedPaths()));
}

void FindDuplicateResultForm::on_explorerButton_clicked()
{
    tell(revealFiles(selectedPaths()));
}

void FindDuplicateResultForm::tell(const OpenedSeveral &opened)
{
    if (!opened.notice.isEmpty())
        showNotice(opened.notice, opened.failed);
}

void FindDuplicateResultForm::copyPath()
{
    QStringList paths;
    for (const Selected &member : selectedMembers())
        paths.append(record(member).fullPath());
    if (!paths.isEmpty())
        QGuiApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
}

void FindDuplicateResultForm::showNotice(const QString &text, bool warning, QAction *action)
{
    m_notice->showNotice(QIcon(warning ? QStringLiteral(":/resources/images/Warning16.png")
                                       : QStringLiteral(":/resources/images/Info16.png")),
                         text, action);
}
