// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/FindDuplicateResultForm.h"

#include "FindDuplicate/GroupModel.h"
#include "FindDuplicate/MemberModel.h"
#include "core/SizeText.h"
#include "platform/Shell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QIcon>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

using duplicates::DuplicateGroup;
using duplicates::FileRecord;

FindDuplicateResultForm::~FindDuplicateResultForm() = default;

bool FindDuplicateResultForm::start()
{
    if (m_groups.empty())
        return false;
    m_mainResult.reset(new FindDuplicateMainResultThread(m_groups));
    connect(m_mainResult.get(), &FindDuplicateMainResultThread::processFinish, this,
            &FindDuplicateResultForm::onMainResultProcessFinish);
    connect(m_mainResult.get(), &FindDuplicateMainResultThread::firstFilesChecked, m_groupModel,
            &GroupModel::setFirstFilesExist);
    m_mainResult->start();
    return true;
}

void FindDuplicateResultForm::onMainResultProcessFinish()
{
    m_statistics = duplicates::statisticsOf(m_groups);
    m_groupModel->setGroups(&m_groups, m_mainResult->takeListed());
    m_groupTree->showColumns({GroupModel::Text});
    m_groupTree->setStretchColumn(GroupModel::Text, 0);
    m_memberTree->showColumns({MemberModel::Text});
    m_memberTree->setStretchColumn(MemberModel::Text, 0);
    showSummary();
    m_groupTree->setCurrentIndex(m_groupModel->index(0, 0));
    emit resultReady();
    m_groupTree->setFocus();
}

void FindDuplicateResultForm::showSummary()
{
    QString text = tr("%1 groups with %2 files; %3 free when one of each is kept")
                       .arg(QString::number(m_statistics.groups), QString::number(m_statistics.files),
                            core::sizeText(m_statistics.freeableBytes));
    if (m_statistics.removedFiles > 0)
        text +=
            tr("; %1 moved to the recycle bin (%2)")
                .arg(QString::number(m_statistics.removedFiles), core::sizeText(m_statistics.removedBytes));
    m_summary->setText(text);
}

void FindDuplicateResultForm::showListed()
{
    const int group = selectedGroup();
    m_groupModel->setListed(m_search->text().trimmed(),
                            static_cast<duplicates::GroupOrder>(m_order->currentData().toInt()));
    const int row = qMax(0, m_groupModel->rowOf(group));
    const QModelIndex index = m_groupModel->index(row, 0);
    if (index.isValid()) {
        m_groupTree->setCurrentIndex(index);
        m_groupTree->scrollTo(index);
    } else {
        readGroup(); // nothing is listed: no members either
    }
}

void FindDuplicateResultForm::refresh()
{
    if (isRemoving() || m_memberModel->groupIndex() < 0)
        return;
    m_contents.clear();
    m_memberModel->setContents({});
    m_selectMember = selectedMember() ? selectedMember()->member : 0;
    m_readLater.start();
    // Ends the one that may still be looking.
    m_mainResult.reset(new FindDuplicateMainResultThread(m_groups));
    connect(m_mainResult.get(), &FindDuplicateMainResultThread::firstFilesChecked, m_groupModel,
            &GroupModel::setFirstFilesExist);
    m_mainResult->start();
}

int FindDuplicateResultForm::selectedGroup() const
{
    const QModelIndexList rows = m_groupTree->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : m_groupModel->groupAt(rows.first().row());
}

void FindDuplicateResultForm::onMainTreeItemChanged(const QItemSelection &, const QItemSelection &)
{
    m_selectMember = 0;
    m_readLater.start();
}

void FindDuplicateResultForm::readGroup()
{
    const int group = selectedGroup();
    if (group < 0) {
        m_result.reset();
        m_memberModel->setGroup(nullptr, -1, {});
        m_groupTitle->setText({});
        enableTools();
        return;
    }
    m_result.reset(new FindDuplicateResultThread(m_root, m_groups[static_cast<std::size_t>(group)], group));
    connect(m_result.get(), &FindDuplicateResultThread::processFinish, this,
            &FindDuplicateResultForm::onProcessFinish);
    m_result->start();
}

void FindDuplicateResultForm::onProcessFinish()
{
    const int index = m_result->groupIndex();
    const DuplicateGroup &group = m_groups[static_cast<std::size_t>(index)];
    m_memberModel->setGroup(&group, index, m_result->takeMembers());
    m_memberModel->setContents(m_contents.value(index));
    m_groupTitle->setText(
        tr("%1 files of %2 each").arg(QString::number(group.members.size()), core::sizeText(group.size)));
    m_memberTree->setCurrentIndex(m_memberModel->index(m_selectMember, MemberModel::Text));
    enableTools();
}

void FindDuplicateResultForm::onItemChanged(const QItemSelection &, const QItemSelection &)
{
    enableTools();
}

std::optional<FindDuplicateResultForm::Selected> FindDuplicateResultForm::selectedMember() const
{
    const QModelIndexList rows = m_memberTree->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return std::nullopt;
    const auto number = [&](int column) { return rows.first().siblingAtColumn(column).data().toInt(); };
    return Selected{number(MemberModel::GroupIndex), number(MemberModel::MemberIndex)};
}

const FileRecord &FindDuplicateResultForm::record(const Selected &member) const
{
    return m_groups[static_cast<std::size_t>(member.group)].members[static_cast<std::size_t>(member.member)];
}

void FindDuplicateResultForm::enableTools()
{
    const std::optional<Selected> member = selectedMember();
    const bool offered = member && !record(*member).checked && !isRemoving();
    m_open->setEnabled(offered);
    m_explorer->setEnabled(offered);
    m_recycleBin->setEnabled(offered && !m_comparison);
    m_compare->setEnabled(m_memberModel->rowCount() > 0 && !m_comparison && !isRemoving());
}

void FindDuplicateResultForm::on_openButton_clicked()
{
    const std::optional<Selected> member = selectedMember();
    if (member && !platform::shell().openFile(record(*member).fullPath()))
        showNotice(tr("%1 could not be opened.").arg(record(*member).fullPath()));
}

void FindDuplicateResultForm::on_explorerButton_clicked()
{
    const std::optional<Selected> member = selectedMember();
    if (member && !platform::shell().revealInExplorer(record(*member).fullPath()))
        showNotice(tr("%1 could not be shown in Explorer.").arg(record(*member).fullPath()));
}

void FindDuplicateResultForm::copyPath()
{
    if (const std::optional<Selected> member = selectedMember())
        QGuiApplication::clipboard()->setText(record(*member).fullPath());
}

void FindDuplicateResultForm::showNotice(const QString &text, bool warning)
{
    m_notice->showNotice(QIcon(warning ? QStringLiteral(":/resources/images/Warning16.png")
                                       : QStringLiteral(":/resources/images/Info16.png")),
                         text);
}

bool FindDuplicateResultForm::isBusy() const
{
    return m_comparison || isRemoving();
}

void FindDuplicateResultForm::requestStop()
{
    if (m_comparison)
        m_comparison->requestStop();
    if (m_removal)
        m_removal->requestStop();
    m_stopRequested = isRemoving();
}

QString FindDuplicateResultForm::busyText() const
{
    if (isRemoving())
        return tr("the removal of a file");
    return m_comparison ? tr("the comparison of files") : QString();
}
