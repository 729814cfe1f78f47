// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/GroupList.h"

#include "FindDuplicate/groups/GroupListModel.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTreeView.h"
#include "widgets/OpenSeveral.h"
#include "widgets/SearchLine.h"
#include "widgets/Theme.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace duplicates
{

GroupList::GroupList(GroupListModel *model, QAbstractItemDelegate *delegate, const Texts &texts,
                     QWidget *parent)
    : QWidget(parent),
      m_model(model),
      m_search(new SearchLine(this)),
      m_order(new QComboBox(this)),
      m_view(new FLTreeView(this))
{
    build(texts);
    delegate->setParent(m_view);
    m_view->setItemDelegate(delegate);
    m_view->setModel(m_model);
    setFocusProxy(m_view);
    connect(m_search, &SearchLine::searched, this, &GroupList::list);
    connect(m_order, &QComboBox::currentIndexChanged, this, &GroupList::list);
    const QItemSelectionModel *selection = m_view->selectionModel();
    connect(selection, &QItemSelectionModel::selectionChanged, this, &GroupList::currentGroupChanged);
    // A right click on one of several selected rows makes it current without changing the selection.
    connect(selection, &QItemSelectionModel::currentRowChanged, this, &GroupList::currentGroupChanged);
    connect(m_view, &QWidget::customContextMenuRequested, this, &GroupList::showMenu);
}

void GroupList::build(const Texts &texts)
{
    m_search->setPlaceholderText(tr("Search by name or folder"));
    m_search->setAccessibleName(tr("Search by name or folder"));
    m_search->setToolTip(
        QStringLiteral("%1 (%2)").arg(texts.searchTip, QKeySequence(QKeySequence::Find).toString()));
    m_search->setMaximumWidth(QWIDGETSIZE_MAX);
    m_order->setObjectName(QStringLiteral("orderComboBox"));
    m_order->setAccessibleName(tr("Order"));
    for (const auto &[order, text] : {std::pair{GroupOrder::Report, tr("Largest file first")},
                                      {GroupOrder::Freeable, tr("Most to free first")},
                                      {GroupOrder::Members, texts.mostMembers},
                                      {GroupOrder::Name, tr("By name")},
                                      {GroupOrder::Folder, tr("By folder")}})
        m_order->addItem(text, static_cast<int>(order));
    m_view->setObjectName(QStringLiteral("sideTreeView"));
    m_view->setAccessibleName(texts.name);
    m_view->setPlaceholder(tr("No group has a file of that name or folder."));
    m_view->setHeaderHidden(true);
    m_view->setRootIsDecorated(false);
    m_view->setMouseTracking(true);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    // With several selected groups, their first files can be opened.
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(theme::spaceSnug);
    column->addWidget(m_search);
    column->addWidget(m_order);
    column->addWidget(m_view, 1);
}

void GroupList::setGroups(std::shared_ptr<const FileGroups> groups, QString root,
                          std::function<quint64(int)> freeable)
{
    m_listing.forget();
    m_groups = std::move(groups);
    m_root = std::move(root);
    m_freeable = std::move(freeable);
    const QSignalBlocker search(m_search);
    const QSignalBlocker order(m_order);
    m_search->clear();
    m_order->setCurrentIndex(0);
}

void GroupList::list()
{
    m_listLater = m_held;
    if (m_held || !m_groups)
        return;
    ListWish wish{m_root, m_search->text().trimmed(),
                  static_cast<GroupOrder>(m_order->currentData().toInt())};
    if (wish.order == GroupOrder::Freeable)
        for (int group = 0; group < m_groups->count(); ++group)
            wish.freeable.push_back(m_freeable(group));
    m_listing.ask(
        [groups = m_groups, wish = std::move(wish)](const core::Asking &) { return groups->listed(wish); },
        [this](std::vector<int> listed) { show(std::move(listed)); });
}

// Keeps the selected group selected at its new position.
void GroupList::show(std::vector<int> listed)
{
    const int group = currentGroup();
    m_model->setListed(std::move(listed));
    const int row = std::max(0, m_model->rowOf(group));
    if (row < m_model->rowCount()) {
        selectRow(row);
        m_view->scrollTo(m_model->index(row, 0));
    }
    emit currentGroupChanged();
}

void GroupList::hold()
{
    m_held = true;
    m_listLater = m_listing.isWaiting();
    m_listing.forget();
}

void GroupList::release()
{
    m_held = false;
    if (m_listLater)
        list();
}

int GroupList::currentGroup() const
{
    const QItemSelectionModel *selection = m_view->selectionModel();
    if (selection->isSelected(selection->currentIndex()))
        return m_model->groupAt(selection->currentIndex().row());
    const std::vector<int> groups = selectedGroups();
    return groups.empty() ? -1 : groups.front();
}

std::vector<int> GroupList::selectedGroups() const
{
    QModelIndexList rows = m_view->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<int> groups;
    for (const QModelIndex &row : std::as_const(rows))
        groups.push_back(m_model->groupAt(row.row()));
    return groups;
}

// Ignores modifier keys, with which the view itself would extend the selection.
void GroupList::selectRow(int row)
{
    m_view->selectionModel()->setCurrentIndex(m_model->index(row, 0), QItemSelectionModel::ClearAndSelect |
                                                                          QItemSelectionModel::Rows);
}

void GroupList::focusSearch()
{
    m_search->setFocus();
    m_search->selectAll();
}

void GroupList::showMenu(const QPoint &where)
{
    if (!m_groups)
        return;
    auto *menu = new FLPopupMenu(m_view);
    menu->setObjectName(QStringLiteral("groupMenu"));
    addOpenFirsts(menu, m_groups->firstPaths(selectedGroups()),
                  [this](const OpenedSeveral &opened) { emit told(opened); });
    menu->addSeparator();
    emit menuAboutToShow(menu);
    menu->popup(m_view->viewport()->mapToGlobal(where));
}

} // namespace duplicates
