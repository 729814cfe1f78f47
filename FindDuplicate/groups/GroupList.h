// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/groups/FileGroups.h"
#include "core/LatestAnswer.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class FLPopupMenu;
class FLTreeView;
class QAbstractItemDelegate;
class QComboBox;
class SearchLine;
struct OpenedSeveral;

namespace duplicates
{

class GroupListModel;

// The list of groups on a results page, one row each, searched and sorted on another thread, with a context
// menu for the selected groups.
class GroupList : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString name; // accessible name of the list
        QString searchTip;
        QString mostMembers; // label of the order by number of members
    };

    GroupList(GroupListModel *model, QAbstractItemDelegate *delegate, const Texts &texts,
              QWidget *parent = nullptr);

    // Resets search and order; the model must have been filled. Null for none. `freeable` returns the bytes
    // that a group could free; called on the interface thread.
    void setGroups(std::shared_ptr<const FileGroups> groups, QString root,
                   std::function<quint64(int group)> freeable);
    // The group whose members are shown: the current one if several are selected. -1 for none.
    int currentGroup() const;
    // In row order.
    std::vector<int> selectedGroups() const;
    void selectRow(int row);
    void focusSearch();
    FLTreeView *view() const { return m_view; }

    // Freezes the rows until release(); requested changes are applied then.
    void hold();
    void release();

signals:
    void currentGroupChanged();
    void menuAboutToShow(FLPopupMenu *menu);
    void told(const OpenedSeveral &opened);

private:
    void build(const Texts &texts);
    void list();
    void show(std::vector<int> listed);
    void showMenu(const QPoint &where);

    GroupListModel *const m_model;
    SearchLine *m_search;
    QComboBox *m_order;
    FLTreeView *m_view;
    std::shared_ptr<const FileGroups> m_groups;
    QString m_root;
    std::function<quint64(int)> m_freeable;
    bool m_held = false;
    bool m_listLater = false;
    core::LatestAnswer m_listing;
};

} // namespace duplicates
