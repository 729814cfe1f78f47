// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"

#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/FindDuplicateImageMainResultThread.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "core/SizeText.h"
#include "platform/FileProbe.h"
#include "platform/Shell.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QIcon>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QToolButton>

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
    QStringList first;
    for (const lookalikes::ImageGroup &group : m_report.groups)
        first.append(group.members.front().fullPath());
    m_prepareThread.reset(new FindDuplicateImageMainResultThread(std::move(first)));
    connect(m_prepareThread.get(), &FindDuplicateImageMainResultThread::path, this,
            &FindDuplicateImageResultForm::prepareReportUpdatePath, Qt::DirectConnection);
    connect(m_prepareThread.get(), &FindDuplicateImageMainResultThread::processFinish, this,
            &FindDuplicateImageResultForm::showReport);
    m_prepareThread->start();
}

void FindDuplicateImageResultForm::clear()
{
    m_prepareThread.reset();
    m_inspection.cancel();
    m_compare->clear();
    m_members->setGroup(nullptr, -1);
    m_groups->setReport(nullptr);
    m_thumbnails.setFile(nullptr);
    m_report = {};
}

bool FindDuplicateImageResultForm::isRemoving() const
{
    return m_removal->isRunning();
}

void FindDuplicateImageResultForm::requestStop()
{
    if (m_prepareThread)
        m_prepareThread->requestStop();
    m_removal->requestStop();
}

void FindDuplicateImageResultForm::showReport()
{
    m_report.firstGone = m_prepareThread->takeGone();
    m_prepareThread.reset();
    m_thumbnails.setFile(m_report.thumbnails);
    m_notice->hide();
    m_search->clear();
    m_title->setText(m_report.root);
    showTotals();
    m_groups->setReport(&m_report);
    m_side->setCurrentIndex(m_found->index(0, 0));
    showGroup();
    emit resultReady();
}

void FindDuplicateImageResultForm::showTotals()
{
    const ImageStatistics now = statisticsOf(m_report.groups);
    const QString groups = now.groups == 1 ? tr("1 group") : tr("%1 groups").arg(QString::number(now.groups));
    QString text = tr("%1 with %2 of %3 pictures, %4 could be freed")
                       .arg(groups, QString::number(now.images), QString::number(m_report.imagesCompared),
                            core::sizeText(now.freeableBytes));
    for (const QString &remark : remarks(m_report))
        text += QLatin1String("; ") + remark;
    m_totals->setText(text);
}

int FindDuplicateImageResultForm::currentGroup() const
{
    const QModelIndex source = m_found->mapToSource(m_side->currentIndex());
    return source.isValid() ? source.row() : -1;
}

int FindDuplicateImageResultForm::currentMember() const
{
    return m_main->currentIndex().isValid() ? m_main->currentIndex().row() : -1;
}

void FindDuplicateImageResultForm::showGroup()
{
    const int group = currentGroup();
    if (group == m_members->group() && group >= 0)
        return;
    m_compare->clear();
    m_members->setGroup(&m_report, group);
    // The second picture: the first one is beside it anyway.
    m_main->setCurrentIndex(m_members->index(m_members->rowCount() > 1 ? 1 : 0));
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
    m_inspection.start([this, group, root = m_report.root,
                        pictures = files(group)](const core::CancelFlag &cancel) -> LatestTask::Effect {
        std::vector<duplicates::MemberFacts> facts =
            duplicates::readMembers(root, pictures, platform::fileProbe(), cancel);
        if (cancel.isSet())
            return {};
        return [this, group, facts = std::move(facts)] { showFacts(group, facts); };
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
    const int row = currentMember();
    const ImageRecord *first = m_members->record(0);
    const ImageRecord *selected = m_members->record(row);
    showButtons();
    if (!first || !selected) {
        m_compare->clear();
        return;
    }
    const auto caption = [](const ImageRecord &image) {
        return tr("%1, %2").arg(image.name, dimensionsText(image));
    };
    m_compare->compare(first->fullPath(), caption(*first), row == 0 ? QString() : selected->fullPath(),
                       row == 0 ? QString() : caption(*selected), m_report.decoders);
}

void FindDuplicateImageResultForm::showButtons()
{
    const int row = currentMember();
    const bool usable = m_members->record(row) && !m_members->record(row)->checked && !isRemoving();
    for (QToolButton *button : {m_open, m_explorer, m_recycle})
        button->setEnabled(usable);
}

void FindDuplicateImageResultForm::on_openButton_clicked()
{
    const ImageRecord *image = m_members->record(currentMember());
    if (image && !image->checked && !platform::shell().openFile(image->fullPath()))
        warn(tr("%1 could not be opened. It may have been moved or deleted since the scan.")
                 .arg(image->fullPath()));
}

void FindDuplicateImageResultForm::on_explorerButton_clicked()
{
    const ImageRecord *image = m_members->record(currentMember());
    if (image && !image->checked && !platform::shell().revealInExplorer(image->fullPath()))
        warn(tr("%1 could not be shown in Explorer.").arg(image->fullPath()));
}

void FindDuplicateImageResultForm::on_RecycleBinButton_clicked()
{
    const int row = currentMember();
    const ImageRecord *image = m_members->record(row);
    if (!image || image->checked || isRemoving())
        return;
    m_removingGroup = m_members->group();
    m_removingMember = row;
    m_notice->hide();
    m_inspection.cancel();
    m_removal->start({m_report.root, files(m_removingGroup), static_cast<std::size_t>(row),
                      m_members->facts(row).value_or(duplicates::MemberFacts())},
                     [this, path = image->fullPath()] {
                         const ImageRecord *shown = m_members->record(m_removingMember);
                         return m_members->group() == m_removingGroup && shown && shown->fullPath() == path;
                     });
    // The question has no owner: without this the page behind it could be used meanwhile.
    setEnabled(false);
    emit removingChanged(true);
}

void FindDuplicateImageResultForm::afterRemoval(const RemovalResult &result)
{
    setEnabled(true);
    m_main->setFocus();
    if (result.outcome == RemovalResult::Outcome::Moved) {
        auto &group = m_report.groups[static_cast<std::size_t>(m_removingGroup)];
        ImageRecord &image = group.members[static_cast<std::size_t>(m_removingMember)];
        image.checked = true;
        image.moved = true;
        m_members->refresh();
        m_groups->refresh(m_removingGroup);
        showTotals();
    } else if (!result.notice.isEmpty()) {
        warn(result.notice);
    }
    if (result.members.empty())
        inspectGroup();
    else
        showFacts(m_removingGroup, result.members);
    showButtons();
    emit removingChanged(false);
}

void FindDuplicateImageResultForm::copyPath()
{
    if (const ImageRecord *image = m_members->record(currentMember()))
        QGuiApplication::clipboard()->setText(image->fullPath());
}

void FindDuplicateImageResultForm::showMenu(const QPoint &where)
{
    if (!m_main->indexAt(where).isValid())
        return;
    auto *menu = new FLPopupMenu(this);
    for (QAction *action : m_main->actions()) {
        action->setEnabled(m_recycle->isEnabled());
        menu->addWithShortcut(action);
    }
    menu->popup(m_main->viewport()->mapToGlobal(where));
}

void FindDuplicateImageResultForm::warn(const QString &text)
{
    m_notice->showNotice(QIcon(QStringLiteral(":/resources/images/Warning16.png")), text);
}
