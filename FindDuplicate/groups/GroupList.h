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

// The side of a results page: the groups, one row each, searched and sorted on another thread, with a menu
// for those that are selected.
class GroupList : public QWidget
{
    Q_OBJECT

public:
    struct Texts {
        QString name; // of the list, for a screen reader
        QString searchTip;
        QString mostMembers; // the order by number of members
    };

    GroupList(GroupListModel *model, QAbstractItemDelegate *delegate, const Texts &texts,
              QWidget *parent = nullptr);

    // Begins with an empty search and in the order of the report; the model has been filled. Null for none.
    // `freeable` says how many bytes a group could give back; called on the interface thread.
    void setGroups(std::shared_ptr<const FileGroups> groups, QString root,
                   std::function<quint64(int group)> freeable);
    // Whose members are to be shown: of several that are selected the current one. -1 for none.
    int currentGroup() const;
    // In the order of the rows.
    std::vector<int> selectedGroups() const;
    void selectRow(int row);
    void focusSearch();
    FLTreeView *view() const { return m_view; }

    // Rows stay as they are until release(); what is asked for meanwhile comes then.
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
