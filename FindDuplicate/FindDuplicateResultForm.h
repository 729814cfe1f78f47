// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FindDuplicateCompareThread.h"
#include "FindDuplicate/engine/Grouping.h"
#include "FindDuplicate/groups/GroupsPage.h"
#include "FindDuplicate/groups/SpareBytes.h"
#include "core/LatestAnswer.h"

#include <QHash>
#include <QTimer>

#include <memory>
#include <vector>

class ElidedLabel;
class FLTreeView;
class QProgressBar;
class QPushButton;

namespace duplicates
{
class GroupModel;
class MemberModel;
} // namespace duplicates

// The groups of duplicates found by a scan, the members of the selected group, and the comparison of their
// contents.
class FindDuplicateResultForm : public duplicates::GroupsPage
{
    Q_OBJECT

public:
    using Groups = std::vector<duplicates::DuplicateGroup>;

    // `root` is the scanned folder; the number is that of its unreadable folders. The groups must not be
    // changed elsewhere while the page exists.
    FindDuplicateResultForm(const QString &root, std::shared_ptr<Groups> groups, int foldersUnread,
                            QWidget *parent = nullptr);
    ~FindDuplicateResultForm() override;

    // Builds the list; resultReady() follows. False if there is nothing to show.
    bool start();

private:
    QWidget *buildRight();
    QWidget *buildNote();

    void showMembers(int group) override;
    quint64 freeable(int group) const override;
    void factsChanged(int group) override;
    void groupChanged(int group) override;
    void forgetFindings(int group) override;
    duplicates::GroupContents contents() const override;
    bool marksFailures() const override { return true; }
    void enableTools() override;
    void fillMemberMenu(FLPopupMenu *menu) override;
    void fillGroupMenu(FLPopupMenu *menu) override;

    void showSummary();
    void showGroupTitle();
    void compareContents();
    void cancelComparison();
    void showComparing(bool comparing);
    void onCompareFinish();
    void showCompareProgress();
    void showCompared(const std::vector<duplicates::ContentState> &states, const QString &error);
    const duplicates::DuplicateGroup &groupAt(int group) const;

    const QString m_root;
    const int m_foldersUnread;
    const std::shared_ptr<Groups> m_groups;
    duplicates::GroupStatistics m_statistics;
    duplicates::GroupModel *m_groupModel;
    duplicates::MemberModel *m_memberModel;
    FLTreeView *m_memberTree;
    ElidedLabel *m_groupTitle;
    QPushButton *m_compare;
    QProgressBar *m_compareBar;
    QPushButton *m_compareCancel;
    QTimer m_compareTicker;

    int m_comparedGroup = -1;
    std::vector<int> m_comparedMembers;
    QHash<int, duplicates::GroupContents> m_contents; // by group
    duplicates::SpareBytes m_spareBytes;
    core::LatestAnswer m_comparing; // comparing their contents
};
