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

class MemberActions;
class MemberListModel;

// The results page of a finder: the groups found by a scan, the members of the selected group, and their
// actions: open, show in Explorer, copy the path, and move one at a time to the recycle bin. Subclasses
// provide the models, the view of the members and everything around it. Sets the `checked`, `moved` and
// `untraced` flags of the records of removed files. Can be destroyed without waiting for an unresponsive
// disk, except while a file is being moved.
class GroupsPage : public QWidget
{
    Q_OBJECT

public:
    ~GroupsPage() override;

    // True while a removal or a job of the subclass is running.
    bool isBusy() const { return m_jobs.isBusy(); }
    // True while a file is being checked or moved.
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
    // Provided by a subclass; owned by the page after build().
    struct Parts {
        GroupListModel *groups;
        QAbstractItemDelegate *groupDelegate;
        GroupList::Texts groupTexts;
        MemberListModel *members;
        QAbstractItemView *memberView; // a child of `right`
        QString memberName;            // accessible name of the view
        ResultToolBar::Tips tools;
        QString removal;  // text for the running job: "the removal of a file"
        QWidget *note;    // at the top of the page; null for none
        QWidget *right;   // beside the groups
        QList<int> sizes; // initial sizes of the splitter, as a proportion
    };

    explicit GroupsPage(QWidget *parent);
    // Call once, in the constructor of the subclass.
    void build(const Parts &parts);

    // Sets the result to show; null for none. The model of the groups must have been filled.
    void setGroups(std::shared_ptr<FileGroups> groups, const QString &root);
    // Determines on a thread which files the list shows; onMainResultProcessFinish() follows. Missing files
    // are detected afterwards.
    void readReport();
    void showTotals(const QString &text);
    MemberActions *memberActions() const { return m_actions; }
    FileGroups &groups() const { return *m_groups; }
    JobHost &jobs() { return m_jobs; }
    GroupList *list() const { return m_list; }
    NoticeBar *notice() const { return m_notice; }
    // Queries the disk about the members of the current group after a short delay.
    void readLater() { m_readLater.start(); }

    // Fills the model of the members; -1 for none.
    virtual void showMembers(int group) = 0;
    virtual quint64 freeable(int group) const = 0;
    // New facts for the current group have arrived.
    virtual void factsChanged(int group) { Q_UNUSED(group) }
    // The flags of the group's records have changed.
    virtual void groupChanged(int group) = 0;
    // Called before the disk is queried again: findings other than the facts are outdated.
    virtual void forgetFindings(int group) { Q_UNUSED(group) }
    // The result of comparing the current group.
    virtual GroupContents contents() const { return {}; }
    // Whether a file that could not be moved is still marked as removed.
    virtual bool marksFailures() const { return false; }
    virtual void memberSelected() { enableTools(); }
    virtual void enableTools();
    // Adds the subclass's actions between those of every page.
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
    void tell(const OpenedSeveral &opened);
    void showGroupMenu(FLPopupMenu *menu);
    void setUsable(bool usable);
    void afterRemoval(const RemovalResult &result);
    void markRemoved(RemovalResult::Outcome outcome);

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
    MemberActions *m_actions = nullptr;
    QAction *m_refreshAction = nullptr;
    QAction *m_openBin = nullptr;     // shown in the notice after a removal
    QAction *m_cancelCheck = nullptr; // shown in the notice during a slow check
    MemberRemoval *m_removal;
    Place m_removed;              // of the running removal
    QTimer m_readLater;           // a held arrow key passes many groups per second
    core::LatestAnswer m_firsts;  // checks which groups still have their first file
    core::LatestAnswer m_reading; // reads the members of the current group
    JobHost m_jobs;
};

} // namespace duplicates
