// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/GroupsPage.h"
#include "FindDuplicateImage/ImageReport.h"
#include "imaging/ThumbnailCache.h"

#include <memory>
#include <utility>

class ComparePane;
class ImageGroupModel;
class ImageMemberModel;
class QListView;

// The groups of pictures that are alike: on the left a row each; on the right the pictures of the selected
// group, and below them the first one beside the selected one, or the two that are selected.
class FindDuplicateImageResultForm : public duplicates::GroupsPage
{
    Q_OBJECT

public:
    explicit FindDuplicateImageResultForm(QWidget *parent = nullptr);
    ~FindDuplicateImageResultForm() override;

    // Shows the report; resultReady() follows. Which pictures are still there is asked of the disk
    // afterwards.
    void prepare(ImageReport report);
    // Lets go of the report, and of the thumbnails and decoders that it holds.
    void clear();
    const ImageReport &report() const { return *m_report; }

signals:
    void prepareReportUpdatePath(QString path); // of the first group, while the report is made

private:
    QWidget *buildRight();

    void showMembers(int group) override;
    quint64 freeable(int group) const override;
    void groupChanged(int group) override;
    void memberSelected() override;

    void showReportTotals();
    void compareMembers();
    // Rows of m_members, -1 for none.
    std::pair<int, int> comparedMembers() const;

    std::shared_ptr<ImageReport> m_report;
    imaging::ThumbnailCache m_thumbnails;
    ImageGroupModel *m_groupModel;
    ImageMemberModel *m_memberModel;
    QListView *m_memberList;
    ComparePane *m_compare;
};
