// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/FileGroups.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class FLPopupMenu;
class QAbstractItemView;
class QAction;
class QPoint;

namespace duplicates
{

class MemberListModel;
class ResultToolBar;

// What can be done with the selected members of the group on show: the tool bar's buttons, the context menu
// and the keys.
class MemberActions : public QObject
{
    Q_OBJECT

public:
    // `view` shows `members`. The keys to open and to show in Explorer work on the whole page, the others in
    // the view.
    MemberActions(QWidget *page, QAbstractItemView *view, const MemberListModel *members,
                  ResultToolBar *toolBar);

    void setGroups(std::shared_ptr<const FileGroups> groups) { m_groups = std::move(groups); }

    // In row order.
    QList<int> selected() const;
    // The selected member if it is the only one and was not removed; otherwise -1.
    int removable() const;
    // Paths of the selected members that were not removed.
    QStringList paths() const;
    // `removing`: a file is being asked about or moved; `busy`: that, or another job runs.
    void enable(bool removing, bool busy);
    // For the member at that position of the view; `addOwn` adds actions before the removal.
    void showMenu(const QPoint &where, const std::function<void(FLPopupMenu *)> &addOwn);

signals:
    void openRequested();
    void explorerRequested();
    void recycleRequested();

private:
    const FileRecord &file(int row) const;
    void copyPaths() const;

    QAbstractItemView *m_view;
    const MemberListModel *m_members;
    ResultToolBar *m_toolBar;
    std::shared_ptr<const FileGroups> m_groups;
    QAction *m_open;
    QAction *m_explorer;
    QAction *m_copy;
    QAction *m_recycle;
};

} // namespace duplicates
