// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/FindDuplicateImageResultForm.h"

#include "FindDuplicate/groups/MemberActions.h"
#include "FindDuplicateImage/ComparePane.h"
#include "FindDuplicateImage/ImageGroupModel.h"
#include "FindDuplicateImage/ImageMemberModel.h"
#include "FindDuplicateImage/PictureDelegates.h"
#include "core/CountText.h"
#include "core/SizeText.h"
#include "widgets/FLTreeView.h"

#include <QItemSelectionModel>
#include <QListView>
#include <QSplitter>

#include <utility>

using lookalikes::ImageGroup;
using lookalikes::ImageRecord;

FindDuplicateImageResultForm::FindDuplicateImageResultForm(QWidget *parent)
    : GroupsPage(parent),
      m_report(std::make_shared<ImageReport>()),
      m_groupModel(new ImageGroupModel(m_thumbnails, this)),
      m_memberModel(new ImageMemberModel(m_thumbnails, this)),
      m_memberList(new QListView(this)),
      m_compare(new ComparePane(this))
{
    build({.groups = m_groupModel,
           .groupDelegate = new ImageGroupDelegate(this),
           .groupTexts = {tr("Groups of pictures that are alike"),
                          tr("Lists the groups with a picture of that name or folder"),
                          tr("Most pictures first")},
           .members = m_memberModel,
           .memberView = m_memberList,
           .memberName = tr("Pictures of the group"),
           .tools = {tr("Open the selected pictures with their programs (Ctrl+O)"),
                     tr("Show the selected pictures in Explorer (Ctrl+E)"),
                     tr("Move the selected picture to the recycle bin (Delete in the list of pictures)")},
           .removal = tr("the removal of a picture"),
           .note = nullptr,
           .right = buildRight(),
           .sizes = {236, 640}});
    FLTreeView *side = list()->view();
    side->setAllColumnsShowFocus(false); // drawn by the delegate
    side->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_memberList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FindDuplicateImageResultForm::compareMembers);
}

FindDuplicateImageResultForm::~FindDuplicateImageResultForm()
{
    clear();
}

QWidget *FindDuplicateImageResultForm::buildRight()
{
    m_memberList->setItemDelegate(new ImageMemberDelegate(m_memberList));
    m_memberList->setFlow(QListView::LeftToRight);
    m_memberList->setWrapping(true);
    m_memberList->setResizeMode(QListView::Adjust);
    m_memberList->setUniformItemSizes(true);
    m_memberList->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_memberList->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_memberList->setMouseTracking(true);
    m_memberList->setFrameShape(QFrame::NoFrame);
    m_memberList->viewport()->setAutoFillBackground(false);

    auto *right = new QSplitter(Qt::Vertical, this);
    right->addWidget(m_memberList);
    right->addWidget(m_compare);
    right->setStretchFactor(0, 1);
    right->setStretchFactor(1, 3);
    right->setChildrenCollapsible(false);
    right->setSizes({122, 300});
    return right;
}

void FindDuplicateImageResultForm::prepare(ImageReport report)
{
    clear();
    *m_report = std::move(report);
    if (!m_report->groups.empty())
        emit prepareReportUpdatePath(m_report->groups.front().members.front().fullPath());
    m_thumbnails.setFile(m_report->thumbnails);
    m_groupModel->setReport(m_report.get());
    // Shares ownership with the report, which contains the groups.
    const std::shared_ptr<std::vector<ImageGroup>> groups(m_report, &m_report->groups);
    setGroups(std::make_shared<duplicates::GroupsOf<ImageGroup>>(groups), m_report->root);
    showReportTotals();
    readReport();
}

void FindDuplicateImageResultForm::clear()
{
    setGroups(nullptr, {});
    m_groupModel->setReport(nullptr);
    m_spareBytes.clear();
    m_thumbnails.setFile(nullptr);
    m_report = std::make_shared<ImageReport>();
}

void FindDuplicateImageResultForm::showReportTotals()
{
    const ImageStatistics now = statisticsOf(m_report->groups);
    const QString groups = core::countText(now.groups, tr("1 group"), tr("%1 groups"));
    QString text = tr("%1 with %2 of %3 pictures, %4 could be freed")
                       .arg(groups, QString::number(now.images), QString::number(m_report->imagesCompared),
                            core::sizeText(m_spareBytes.corrected(now.freeableBytes)));
    for (const QString &remark : remarks(*m_report))
        text += QLatin1String("; ") + remark;
    showTotals(text);
}

void FindDuplicateImageResultForm::showMembers(int group)
{
    m_compare->clear();
    m_memberModel->setGroup(group < 0 ? nullptr : m_report.get(), group);
    // Shows the second image, since the first is always shown beside it. Nothing is selected automatically:
    // only what the user selects can be removed.
    m_memberList->selectionModel()->setCurrentIndex(
        m_memberModel->index(m_memberModel->rowCount() > 1 ? 1 : 0, 0), QItemSelectionModel::Clear);
    m_memberList->scrollToTop();
}

quint64 FindDuplicateImageResultForm::freeable(int group) const
{
    return m_spareBytes.of(group,
                           lookalikes::freeableBytes(m_report->groups[static_cast<std::size_t>(group)]));
}

void FindDuplicateImageResultForm::factsChanged(int group)
{
    if (!m_memberModel->allFacts().empty())
        m_spareBytes.set(group, lookalikes::freeableBytes(m_report->groups[static_cast<std::size_t>(group)]),
                         m_memberModel->spareBytes());
    showReportTotals();
}

void FindDuplicateImageResultForm::groupChanged(int group)
{
    m_spareBytes.forget(group);
    if (group == m_memberModel->groupIndex())
        factsChanged(group);
    else
        showReportTotals();
}

void FindDuplicateImageResultForm::memberSelected()
{
    GroupsPage::memberSelected();
    compareMembers();
}

void FindDuplicateImageResultForm::compareMembers()
{
    const auto [left, right] = comparedMembers();
    const ImageRecord *first = m_memberModel->record(left);
    const ImageRecord *second = m_memberModel->record(right);
    if (!first || !second) {
        m_compare->clear();
        return;
    }
    const auto caption = [](const ImageRecord &image) {
        return tr("%1, %2").arg(image.name, dimensionsText(image));
    };
    const bool alone = first == second;
    m_compare->compare(first->fullPath(), caption(*first), alone ? QString() : second->fullPath(),
                       alone ? QString() : caption(*second), m_report->decoders);
}

// The two selected images; otherwise the first image of the group and the one selected last.
std::pair<int, int> FindDuplicateImageResultForm::comparedMembers() const
{
    const QList<int> rows = memberActions()->selected();
    if (rows.size() == 2)
        return {rows.first(), rows.last()};
    return {0, rows.size() == 1 ? rows.first() : m_memberList->currentIndex().row()};
}
