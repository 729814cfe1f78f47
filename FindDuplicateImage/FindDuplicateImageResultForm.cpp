// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"

#include "FindDuplicate/engine/ListedGroups.h"
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "platform/FileProbe.h"
#include "platform/Paths.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/OpenSeveral.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QIcon>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <utility>

using duplicates::RemovalResult;
using lookalikes::ImageRecord;

FindDuplicateImageResultForm::~FindDuplicateImageResultForm()
{
    clear();
}

void FindDuplicateImageResultForm::prepare(ImageReport report)
{
    clear();
    m_report = std::move(report);
    m_report.firstGone.assign(m_report.groups.size(), false);
    if (!m_report.groups.empty())
        emit prepareReportUpdatePath(m_report.groups.front().members.front().fullPath());
    m_thumbnails.setFile(m_report.thumbnails);
    m_notice->hide();
    showEmptySearch();
    m_title->setText(m_report.root);
    showTotals();
    m_groups->setReport(&m_report);
    selectGroupRow(0);
    showGroup();
    askFirsts();
    emit resultReady();
}

void FindDuplicateImageResultForm::clear()
{
    m_inspection.forget();
    m_firsts.forget();
    m_searchLater.stop();
    m_compare->clear();
    m_members->setGroup(nullptr, -1);
    m_groups->setReport(nullptr);
    m_thumbnails.setFile(nullptr);
    m_report = {};
}

void FindDuplicateImageResultForm::showEmptySearch()
{
    m_search->clear();
    m_searchLater.stop();
    const QSignalBlocker order(m_order);
    m_order->setCurrentIndex(0);
}

void FindDuplicateImageResultForm::showTotals()
{
    const ImageStatistics now = statisticsOf(m_report.groups);
    const QString groups = core::countText(now.groups, tr("1 group"), tr("%1 groups"));
    QString text = tr("%1 with %2 of %3 pictures, %4 could be freed")
                       .arg(groups, QString::number(now.images), QString::number(m_report.imagesCompared),
                            core::sizeText(now.freeableBytes));
    for (const QString &remark : remarks(m_report))
        text += QLatin1String("; ") + remark;
    m_totals->setText(text);
}

void FindDuplicateImageResultForm::showListed()
{
    const int group = m_members->group();
    m_groups->setListed(duplicates::listedGroups(
        m_report.groups, m_report.root, m_search->text().trimmed(),
        static_cast<duplicates::GroupOrder>(m_order->currentData().toInt()), &lookalikes::freeableBytes));
    const int row = std::max(0, m_groups->rowOf(group));
    selectGroupRow(row);
    m_side->scrollTo(m_groups->index(row));
    showGroup();
}

// Looks at the disk again: at the pictures of the group, and at the first one of every other.
void FindDuplicateImageResultForm::refresh()
{
    if (isRemoving() || m_members->group() < 0)
        return;
    inspectGroup();
    askFirsts();
}

void FindDuplicateImageResultForm::askFirsts()
{
    QStringList paths;
    for (const lookalikes::ImageGroup &group : m_report.groups)
        paths.append(group.members.front().fullPath());
    m_firsts.ask(
        [this, paths](const core::Asking &asking) {
            constexpr qsizetype askedAtOnce = 500;
            for (qsizetype first = 0; first < paths.size(); first += askedAtOnce) {
                std::vector<bool> gone;
                for (const QString &path : paths.mid(first, askedAtOnce)) {
                    if (asking.isCancelled())
                        return false;
                    gone.push_back(!platform::fileExists(path));
                }
                asking.tell([this, first, gone] {
                    std::copy(gone.cbegin(), gone.cend(), m_report.firstGone.begin() + first);
                    m_groups->refreshAll();
                });
            }
            return true;
        },
        [](bool) {});
}

// Whatever keys are held down: the view itself would add to a selection with Ctrl or Shift.
void FindDuplicateImageResultForm::selectGroupRow(int row)
{
    m_side->selectionModel()->setCurrentIndex(m_groups->index(row), QItemSelectionModel::ClearAndSelect |
                                                                        QItemSelectionModel::Rows);
}

void FindDuplicateImageResultForm::showGroup()
{
    const int group = m_groups->groupAt(m_side->currentIndex().row());
    if (group == m_members->group() && group >= 0)
        return;
    m_compare->clear();
    m_members->setGroup(&m_report, group);
    // The second picture: the first one is beside it anyway. Nothing is selected by itself: what is asked to
    // go is what the user chose.
    m_main->selectionModel()->setCurrentIndex(m_members->index(m_members->rowCount() > 1 ? 1 : 0),
                                              QItemSelectionModel::Clear);
    m_main->scrollToTop();
    inspectGroup();
    showMember();
}

// The records of a group without what only pictures have.
std::vector<duplicates::FileRecord> FindDuplicateImageResultForm::files(int group) const
{
    const auto &members = m_report.groups[static_cast<std::size_t>(group)].members;
    return {members.cbegin(), members.cend()};
}

void FindDuplicateImageResultForm::inspectGroup()
{
    const int group = m_members->group();
    if (group < 0)
        return;
    m_inspection.ask(
        [root = m_report.root, pictures = files(group)](const core::Asking &asking) {
            return duplicates::readMembers(root, pictures, platform::fileProbe(), asking.cancel());
        },
        [this, group](const std::vector<duplicates::MemberFacts> &facts) { showFacts(group, facts); },
        [this](const QString &error) {
            warn(tr("The files of this group could not be checked. %1").arg(error));
        });
}

void FindDuplicateImageResultForm::showFacts(int group, const std::vector<duplicates::MemberFacts> &facts)
{
    if (m_members->group() != group || facts.empty())
        return;
    m_report.firstGone[static_cast<std::size_t>(group)] = !facts.front().mark.exists;
    m_members->setFacts(facts);
    m_groups->refresh(group);
    showButtons();
}

void FindDuplicateImageResultForm::showMember()
{
    const auto [left, right] = comparedMembers();
    const ImageRecord *first = m_members->record(left);
    const ImageRecord *second = m_members->record(right);
    showButtons();
    if (!first || !second) {
        m_compare->clear();
        return;
    }
    const auto caption = [](const ImageRecord &image) {
        return tr("%1, %2").arg(image.name, dimensionsText(image));
    };
    const bool alone = first == second;
    m_compare->compare(first->fullPath(), caption(*first), alone ? QString() : second->fullPath(),
                       alone ? QString() : caption(*second), m_report.decoders);
}

QList<int> FindDuplicateImageResultForm::selectedMembers() const
{
    QList<int> rows;
    for (const QModelIndex &index : m_main->selectionModel()->selectedIndexes())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

// The two that are selected; otherwise the first one and the selected one, or the one that was selected last.
std::pair<int, int> FindDuplicateImageResultForm::comparedMembers() const
{
    const QList<int> rows = selectedMembers();
    if (rows.size() == 2)
        return {rows.first(), rows.last()};
    return {0, rows.size() == 1 ? rows.first() : m_main->currentIndex().row()};
}

int FindDuplicateImageResultForm::removableMember() const
{
    const QList<int> rows = selectedMembers();
    return rows.size() == 1 && !m_members->record(rows.first())->checked ? rows.first() : -1;
}

// Of those that were not removed.
QStringList FindDuplicateImageResultForm::selectedPaths() const
{
    QStringList paths;
    for (const int row : selectedMembers())
        if (const ImageRecord *image = m_members->record(row); !image->checked)
            paths.append(image->fullPath());
    return paths;
}

void FindDuplicateImageResultForm::showButtons()
{
    const bool usable = !isRemoving() && !selectedPaths().isEmpty();
    const bool removable = !isRemoving() && removableMember() >= 0;
    for (QToolButton *button : {m_open, m_explorer})
        button->setEnabled(usable);
    for (QAction *action : {m_openAction, m_explorerAction})
        action->setEnabled(usable);
    m_recycle->setEnabled(removable);
    m_recycleAction->setEnabled(removable);
    m_copyAction->setEnabled(!selectedMembers().isEmpty());
}

void FindDuplicateImageResultForm::on_openButton_clicked()
{
    tell(openFiles(selectedPaths()));
}

void FindDuplicateImageResultForm::on_explorerButton_clicked()
{
    tell(revealFiles(selectedPaths()));
}

void FindDuplicateImageResultForm::tell(const OpenedSeveral &opened)
{
    if (!opened.notice.isEmpty())
        warn(opened.notice);
}

void FindDuplicateImageResultForm::on_RecycleBinButton_clicked()
{
    const int row = removableMember();
    if (row < 0 || isRemoving())
        return;
    const ImageRecord *image = m_members->record(row);
    m_removingGroup = m_members->group();
    m_removingMember = row;
    m_notice->hide();
    m_inspection.forget();
    // The group is not changed under the question.
    m_searchWaits = m_searchLater.isActive();
    m_searchLater.stop();
    m_removal->start({m_report.root, files(m_removingGroup), static_cast<std::size_t>(row),
                      m_members->facts(row).value_or(duplicates::MemberFacts())},
                     [this, path = image->fullPath()] {
                         const ImageRecord *shown = m_members->record(m_removingMember);
                         return m_members->group() == m_removingGroup && shown && shown->fullPath() == path;
                     });
    m_jobs.begin({.busyText = tr("the removal of a picture")}, [this] { m_removal->requestStop(); });
    setUsable(false);
}

// The question has no owner: without this the page behind it could be used meanwhile. The notice stays
// usable: it is where a look at the disk that takes long is told, and can be given up.
void FindDuplicateImageResultForm::setUsable(bool usable)
{
    m_toolBar->setEnabled(usable);
    m_splitter->setEnabled(usable);
}

void FindDuplicateImageResultForm::showLooking()
{
    m_notice->showNotice(QIcon(QStringLiteral(":/resources/images/Info16.png")),
                         tr("Looking at the file ..."), m_cancelLook);
}

void FindDuplicateImageResultForm::afterRemoval(const RemovalResult &result)
{
    if (!result.notice.isEmpty())
        m_jobs.keepOpen();
    m_jobs.end();
    setUsable(true);
    m_main->setFocus();
    if (result.outcome == RemovalResult::Outcome::Moved) {
        auto &group = m_report.groups[static_cast<std::size_t>(m_removingGroup)];
        ImageRecord &image = group.members[static_cast<std::size_t>(m_removingMember)];
        image.checked = true;
        image.moved = true;
        m_members->refresh();
        m_groups->refresh(m_removingGroup);
        showTotals();
        m_notice->showNotice(QIcon(QStringLiteral(":/resources/images/Info16.png")),
                             tr("%1 was moved to the recycle bin.").arg(image.fullPath()), m_openBin);
    } else if (!result.notice.isEmpty()) {
        warn(result.notice);
    }
    if (result.members.empty())
        inspectGroup();
    else
        showFacts(m_removingGroup, result.members);
    showButtons();
    if (std::exchange(m_searchWaits, false))
        m_searchLater.start();
}

void FindDuplicateImageResultForm::copyPath()
{
    QStringList paths;
    for (const int row : selectedMembers())
        paths.append(m_members->record(row)->fullPath());
    if (!paths.isEmpty())
        QGuiApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
}

void FindDuplicateImageResultForm::showMenu(const QPoint &where)
{
    if (!m_main->indexAt(where).isValid())
        return;
    auto *menu = new FLPopupMenu(this);
    for (QAction *action : {m_openAction, m_explorerAction, m_copyAction, m_recycleAction})
        menu->addWithShortcut(action);
    menu->popup(m_main->viewport()->mapToGlobal(where));
}

void FindDuplicateImageResultForm::showGroupMenu(const QPoint &where)
{
    QModelIndexList rows = m_side->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<int> groups;
    for (const QModelIndex &row : std::as_const(rows))
        groups.push_back(m_groups->groupAt(row.row()));
    auto *menu = new FLPopupMenu(this);
    menu->setObjectName(QStringLiteral("groupMenu"));
    addOpenFirsts(menu, duplicates::firstPaths(m_report.groups, groups),
                  [this](const OpenedSeveral &opened) { tell(opened); });
    menu->popup(m_side->viewport()->mapToGlobal(where));
}

void FindDuplicateImageResultForm::warn(const QString &text)
{
    m_notice->showNotice(QIcon(QStringLiteral(":/resources/images/Warning16.png")), text);
}
