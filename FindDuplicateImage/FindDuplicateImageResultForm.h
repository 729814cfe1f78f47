// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/GroupsPage.h"
#include "FindDuplicate/groups/SpareBytes.h"
#include "FindDuplicateImage/ImageReport.h"
#include "imaging/ThumbnailCache.h"

#include <memory>
#include <utility>

class ComparePane;
class ImageGroupModel;
class ImageMemberModel;
class QListView;

// The groups of similar images: on the left one row per group; on the right the images of the selected group,
// and below them the first image beside the selected one, or the two selected ones.
class FindDuplicateImageResultForm : public duplicates::GroupsPage
{
    Q_OBJECT

public:
    explicit FindDuplicateImageResultForm(QWidget *parent = nullptr);
    ~FindDuplicateImageResultForm() override;

    // Shows the report; resultReady() follows. Which images still exist is checked afterwards.
    void prepare(ImageReport report);
    // Releases the report with its thumbnails and decoders.
    void clear();
    const ImageReport &report() const { return *m_report; }

signals:
    void prepareReportUpdatePath(QString path); // of the first group, while the report is being built

private:
    QWidget *buildRight();

    void showMembers(int group) override;
    quint64 freeable(int group) const override;
    void factsChanged(int group) override;
    void groupChanged(int group) override;
    void memberSelected() override;

    void showReportTotals();
    void compareMembers();
    // Rows of m_members; -1 for none.
    std::pair<int, int> comparedMembers() const;

    std::shared_ptr<ImageReport> m_report;
    duplicates::SpareBytes m_spareBytes;
    imaging::ThumbnailCache m_thumbnails;
    ImageGroupModel *m_groupModel;
    ImageMemberModel *m_memberModel;
    QListView *m_memberList;
    ComparePane *m_compare;
};
