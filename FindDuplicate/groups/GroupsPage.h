// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/GroupList.h"
#include "FindDuplicate/groups/ResultToolBar.h"
#include "FindDuplicate/removal/MemberRemoval.h"
#include "core/LatestAnswer.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QAbstractItemView;
class QAction;
class QItemSelection;
class QSplitter;

namespace duplicates
{

class MemberListModel;

// The results page of a finder: the groups that a scan found, the members of the selected one, and what can
// be done with them: open, show in Explorer, copy the path, and move one at a time to the recycle bin.
// A subclass brings the models, the view of the members and what stands around it. Sets the `checked` and
// `moved` bytes of a record whose file the user had moved. Goes without waiting for a disk that does not
// answer, but for a file that is just being moved.
class GroupsPage : public QWidget
{
    Q_OBJECT

public:
    ~GroupsPage() override;

    // A job of this page runs: a removal, or one of the subclass.
    bool isBusy() const { return m_jobs.isBusy(); }
    // A file is being asked about or moved.
    bool isRemoving() const { return m_removal->isRunning(); }
    void requestStop() { m_jobs.cancel(); }
    void showNotice(NoticeBar::Kind kind, const QString &text, QAction *action = nullptr);

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

protected:
    // What a subclass brings; the page owns it from build() on.
    struct Parts {
        GroupListModel *groups;
        QAbstractItemDelegate *groupDelegate;
        GroupList::Texts groupTexts;
        MemberListModel *members;
        QAbstractItemView *memberView; // somewhere in `right`
        QString memberName;            // of the view, for a screen reader
        ResultToolBar::Tips tools;
        QString removal;  // what runs then: "the removal of a file"
        QWidget *note;    // above everything; null for none
        QWidget *right;   // beside the groups
        QList<int> sizes; // a proportion
    };

    explicit GroupsPage(QWidget *parent);
    // Once, in the constructor of the subclass.
    void build(const Parts &parts);

    // The result to show; null for none. The model of the groups has been filled.
    void setGroups(std::shared_ptr<FileGroups> groups, const QString &root);
    // Reads on a thread which files the list shows; onMainResultProcessFinish() follows. Afterwards it is
    // found out which of them have gone.
    void readReport();
    void showTotals(const QString &text);
    // In the order of the rows.
    QList<int> selectedMembers() const;
    FileGroups &groups() const { return *m_groups; }
    JobHost &jobs() { return m_jobs; }
    GroupList *list() const { return m_list; }
    NoticeBar *notice() const { return m_notice; }
    // Asks the disk about the members of the group on show, a moment later.
    void readLater() { m_readLater.start(); }

    // Fills the model of the members; -1 for none.
    virtual void showMembers(int group) = 0;
    virtual quint64 freeable(int group) const = 0;
    // The disk has told about the members of this group, which is on show.
    virtual void factsChanged(int group) { Q_UNUSED(group) }
    // The marks of its records have changed.
    virtual void groupChanged(int group) = 0;
    // Before the disk is asked anew: what was found out about the group, beside the facts, does not hold.
    virtual void forgetFindings(int group) { Q_UNUSED(group) }
    // What a comparison of the group on show found.
    virtual GroupContents contents() const { return {}; }
    // A file that the system would not move is marked as if it had gone.
    virtual bool marksFailures() const { return false; }
    virtual void memberSelected() { enableTools(); }
    virtual void enableTools();
    // Own actions, between those of every page.
    virtual void fillMemberMenu(FLPopupMenu *menu) { Q_UNUSED(menu) }
    virtual void fillGroupMenu(FLPopupMenu *menu) { Q_UNUSED(menu) }

private:
    struct Place {
        int group = -1;
        int member = -1;
    };

    void buildLayout(const Parts &parts);
    void buildActions();
    void connectAll();
    void checkFirstFiles(bool report);
    void showGroup();
    void readGroup();
    void showFacts(std::vector<MemberFacts> facts);
    void refresh();
    // The selected one, if it is the only one, and was not removed; -1 otherwise.
    int removableMember() const;
    // Those of the selected ones that were not removed.
    QStringList selectedPaths() const;
    void copyPaths();
    void tell(const OpenedSeveral &opened);
    void showMemberMenu(const QPoint &where);
    void showGroupMenu(FLPopupMenu *menu);
    void setUsable(bool usable);
    void afterRemoval(const RemovalResult &result);
    void markRemoved(bool moved);

    QString m_removalText;
    GroupListModel *m_groupModel = nullptr;
    MemberListModel *m_memberModel = nullptr;
    QAbstractItemView *m_memberView = nullptr;
    std::shared_ptr<FileGroups> m_groups;
    QString m_root;

    ResultToolBar *m_toolBar = nullptr;
    NoticeBar *m_notice;
    QSplitter *m_splitter;
    GroupList *m_list = nullptr;
    QAction *m_openAction = nullptr;
    QAction *m_explorerAction = nullptr;
    QAction *m_copyAction = nullptr;
    QAction *m_recycleAction = nullptr;
    QAction *m_refreshAction = nullptr;
    QAction *m_openBin = nullptr;    // in the notice after a removal
    QAction *m_cancelLook = nullptr; // in the notice before its question
    MemberRemoval *m_removal;
    Place m_removed;              // of the removal that runs
    QTimer m_readLater;           // a held arrow key passes many groups in a second
    core::LatestAnswer m_firsts;  // which groups still have their first file
    core::LatestAnswer m_reading; // the members of the group on show
    JobHost m_jobs;
};

} // namespace duplicates
