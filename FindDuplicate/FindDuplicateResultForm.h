// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FindDuplicateCompareThread.h"
#include "FindDuplicate/FindDuplicateMainResultThread.h"
#include "FindDuplicate/FindDuplicateRemovalThread.h"
#include "FindDuplicate/FindDuplicateResultThread.h"

#include <QHash>
#include <QTimer>
#include <QWidget>

#include <optional>
#include <vector>

class ElidedLabel;
class FLTreeView;
class GroupModel;
class MemberModel;
class NoticeBar;
class QAction;
class QComboBox;
class QItemSelection;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QToolBar;
class QToolButton;
class QVBoxLayout;

// The groups that a scan found, the members of the selected one, and what can be done with a member. Sets the
// `checked` byte of a record whose file it has moved to the recycle bin.
class FindDuplicateResultForm : public QWidget
{
    Q_OBJECT

public:
    // The groups belong to the caller and outlive this page; `root` is the folder that was scanned.
    FindDuplicateResultForm(QString root, std::vector<duplicates::DuplicateGroup> &groups,
                            QWidget *parent = nullptr);
    ~FindDuplicateResultForm() override;

    // Builds the list; resultReady() follows. False when there is nothing to show.
    bool start();

    // A comparison or a removal runs.
    bool isBusy() const;
    bool isRemoving() const { return m_removal || m_asking; }
    void requestStop();
    QString busyText() const;

    const duplicates::GroupStatistics &statistics() const { return m_statistics; }

public slots:
    void on_openButton_clicked();
    void on_explorerButton_clicked();
    void on_RecycleBinButton_clicked();
    void onMainResultProcessFinish();
    void onProcessFinish();
    void onMainTreeItemChanged(const QItemSelection &selected, const QItemSelection &deselected);
    void onItemChanged(const QItemSelection &selected, const QItemSelection &deselected);

signals:
    void backToMain();
    void resultReady();
    // False from the moment on when a removal is asked for, true when it has ended in any way.
    void showToolbarSignal(bool show);

private:
    // In FindDuplicateResultPage.cpp.
    void buildToolBar();
    QToolButton *addTool(const char *name, const char *icon, const QString &text, const QString &toolTip);
    void buildGroupList(QVBoxLayout *column);
    void buildMemberList(QVBoxLayout *column);
    void buildLayout();
    void buildActions();
    QAction *addKey(QWidget *owner, const QKeySequence &key, const QString &text = {});
    void connectAll();
    void showMemberMenu(const QPoint &where);
    void showGroupMenu(const QPoint &where);

    void showSummary();
    void showListed();
    void refresh();
    void readGroup();
    void enableTools();
    // Everything that is known of the selected member; empty without one.
    struct Selected {
        int group;
        int member;
    };
    std::optional<Selected> selectedMember() const;
    int selectedGroup() const;
    const duplicates::FileRecord &record(const Selected &member) const;
    void copyPath();
    void showNotice(const QString &text, bool warning = true);

    // In FindDuplicateContents.cpp.
    void compareContents();
    void onCompareFinish();
    void showCompareProgress();

    // In FindDuplicateRemoval.cpp.
    std::optional<RemovalRequest> requestFor(const Selected &member) const;
    void startRemoval(FindDuplicateRemovalThread::Step step, RemovalRequest request);
    void onRemovalFinish();
    void askForRemoval(RemovalRequest request);
    bool stillShown(const RemovalRequest &request) const;
    void markRemoved(const RemovalRequest &request, bool moved);
    void endRemoval(const QString &notice = {});

    const QString m_root;
    std::vector<duplicates::DuplicateGroup> &m_groups;
    duplicates::GroupStatistics m_statistics;

    QToolBar *m_toolBar;
    QToolButton *m_back = nullptr;
    QToolButton *m_open = nullptr;
    QToolButton *m_explorer = nullptr;
    QToolButton *m_recycleBin = nullptr;
    ElidedLabel *m_summary;
    QLabel *m_note;
    NoticeBar *m_notice;
    QLineEdit *m_search;
    QComboBox *m_order;
    FLTreeView *m_groupTree;
    ElidedLabel *m_groupTitle;
    QPushButton *m_compare;
    QProgressBar *m_compareBar;
    QPushButton *m_compareCancel;
    FLTreeView *m_memberTree;
    GroupModel *m_groupModel;
    MemberModel *m_memberModel;
    QTimer m_searchLater; // a fast typist is not kept waiting by every letter
    QTimer m_readLater;   // a held arrow key passes many groups in a second: the one it stops at is read
    QTimer m_compareTicker;

    int m_selectMember = 0; // when the group's members have been read
    bool m_asking = false;
    bool m_stopRequested = false;
    int m_comparedGroup = -1;
    std::vector<int> m_comparedMembers;
    QHash<int, std::vector<duplicates::ContentState>> m_contents; // by group
    core::WorkerPointer<FindDuplicateMainResultThread> m_mainResult;
    core::WorkerPointer<FindDuplicateResultThread> m_result;
    core::WorkerPointer<FindDuplicateCompareThread> m_comparison;
    core::WorkerPointer<FindDuplicateRemovalThread> m_removal;
};
