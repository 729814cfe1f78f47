// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/FindDuplicateCompareThread.h"
#include "FindDuplicate/FindDuplicateMainResultThread.h"
#include "FindDuplicate/FindDuplicateResultThread.h"
#include "FindDuplicate/engine/Grouping.h"
#include "FindDuplicate/removal/MemberRemoval.h"
#include "core/LatestAnswer.h"
#include "widgets/JobHost.h"

#include <QHash>
#include <QTimer>
#include <QWidget>

#include <memory>
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
class QSplitter;
class QToolBar;
class QToolButton;
class QVBoxLayout;
struct OpenedSeveral;

// The groups that a scan found, the members of the selected one, and what can be done with a member. Sets the
// `checked` and `moved` bytes of a record whose file the user had moved to the recycle bin. Goes without
// waiting for a disk that does not answer, but for a file that is just being moved.
class FindDuplicateResultForm : public QWidget
{
    Q_OBJECT

public:
    using Groups = std::vector<duplicates::DuplicateGroup>;

    // `root` is the folder that was scanned; that many folders in it could not be read. Nobody else changes
    // the groups while the page lives.
    FindDuplicateResultForm(QString root, std::shared_ptr<Groups> groups, int foldersUnread,
                            QWidget *parent = nullptr);
    ~FindDuplicateResultForm() override;

    // Builds the list; resultReady() follows. False when there is nothing to show.
    bool start();

    // A comparison or a removal runs.
    bool isBusy() const { return m_jobs.isBusy(); }
    bool isRemoving() const { return m_removal->isRunning(); }
    void requestStop() { m_jobs.cancel(); }

    void showNotice(const QString &text, bool warning = true, QAction *action = nullptr);

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
    void showGroup();
    void showGroupTitle();
    void readGroup();
    void showFacts(std::vector<duplicates::MemberFacts> facts);
    void noteSpareBytes();
    void enableTools();
    void checkFirstFiles(FindDuplicateMainResultThread *worker);
    struct Selected {
        int group = -1;
        int member = -1;
    };
    // In the order of the list.
    QList<Selected> selectedMembers() const;
    // Those of them that were not removed.
    QStringList selectedPaths() const;
    // The selected one, if it is the only one, and was not removed.
    std::optional<Selected> removableMember() const;
    // The one whose members are shown: the current one, if it is among the selected ones.
    int selectedGroup() const;
    void selectGroupRow(int row);
    // In the order of the list.
    std::vector<int> selectedGroups() const;
    const duplicates::DuplicateGroup &groupAt(int group) const;
    duplicates::DuplicateGroup &groupAt(int group);
    const duplicates::FileRecord &record(const Selected &member) const;
    void copyPath();
    void tell(const OpenedSeveral &opened);

    // In FindDuplicateContents.cpp.
    void compareContents();
    void cancelComparison();
    void showComparing(bool comparing);
    void onCompareFinish();
    void showCompareProgress();

    // In FindDuplicateRemoval.cpp.
    void setUsable(bool usable);
    void showLooking();
    void afterRemoval(const duplicates::RemovalResult &result);
    void markRemoved(bool moved);

    const QString m_root;
    const int m_foldersUnread;
    const std::shared_ptr<Groups> m_groups;
    duplicates::GroupStatistics m_statistics;

    QToolBar *m_toolBar;
    QToolButton *m_back = nullptr;
    QToolButton *m_open = nullptr;
    QToolButton *m_explorer = nullptr;
    QToolButton *m_recycleBin = nullptr;
    ElidedLabel *m_summary;
    QLabel *m_note;
    NoticeBar *m_notice;
    QSplitter *m_splitter;
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
    QAction *m_openBin = nullptr;    // in the notice after a removal
    QAction *m_cancelLook = nullptr; // in the notice before its question
    duplicates::MemberRemoval *m_removal;
    QTimer m_searchLater; // a fast typist is not kept waiting by every letter
    QTimer m_readLater;   // a held arrow key passes many groups in a second: the one it stops at is asked for
    QTimer m_compareTicker;

    Selected m_removed;         // of the removal that runs
    bool m_searchWaits = false; // until it has ended
    int m_comparedGroup = -1;
    std::vector<int> m_comparedMembers;
    QHash<int, duplicates::GroupContents> m_contents; // by group
    QHash<int, quint64> m_spareBytes;                 // of the groups that the disk was asked about
    core::LatestAnswer m_firsts;                      // which groups still have their first file
    core::LatestAnswer m_reading;                     // the members of the group on show
    core::LatestAnswer m_comparing;                   // their contents
    JobHost m_jobs;
};
