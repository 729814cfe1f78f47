// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/groups/MemberActions.h"

#include "FindDuplicate/groups/MemberListModel.h"
#include "FindDuplicate/groups/ResultToolBar.h"
#include "widgets/Controls.h"
#include "widgets/FLPopupMenu.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QToolButton>

#include <algorithm>

namespace duplicates
{

MemberActions::MemberActions(QWidget *page, QAbstractItemView *view, const MemberListModel *members,
                             ResultToolBar *toolBar)
    : QObject(page),
      m_view(view),
      m_members(members),
      m_toolBar(toolBar),
      m_open(controls::action(page,
                              {"openAction", "Activate24", toolBar->open()->text(), {}, Qt::CTRL | Qt::Key_O},
                              [this] { emit openRequested(); })),
      m_explorer(controls::action(
          page, {"showInExplorerAction", "FolderSearch24", tr("Show in Explorer"), {}, Qt::CTRL | Qt::Key_E},
          [this] { emit explorerRequested(); })),
      m_copy(controls::action(view, {"copyPathAction", "Copy24", tr("Copy Path"), {}, QKeySequence::Copy},
                              [this] { copyPaths(); })),
      // Only in the member list, where it is clear which file is meant.
      m_recycle(controls::action(
          view, {"recycleAction", "RecycleBin24", toolBar->recycleBin()->text(), {}, QKeySequence::Delete},
          [this] { emit recycleRequested(); }))
{
    connect(toolBar->open(), &QAbstractButton::clicked, this, &MemberActions::openRequested);
    connect(toolBar->explorer(), &QAbstractButton::clicked, this, &MemberActions::explorerRequested);
    connect(toolBar->recycleBin(), &QAbstractButton::clicked, this, &MemberActions::recycleRequested);
}

const FileRecord &MemberActions::file(int row) const
{
    return m_groups->file(m_members->groupIndex(), row);
}

QList<int> MemberActions::selected() const
{
    QList<int> rows;
    for (const QModelIndex &row : m_view->selectionModel()->selectedRows())
        rows.append(row.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

int MemberActions::removable() const
{
    const QList<int> rows = selected();
    return rows.size() == 1 && !file(rows.first()).checked ? rows.first() : -1;
}

QStringList MemberActions::paths() const
{
    QStringList paths;
    for (const int row : selected())
        if (!file(row).checked)
            paths.append(file(row).fullPath());
    return paths;
}

void MemberActions::enable(bool removing, bool busy)
{
    const QList<int> rows = selected();
    const bool offered =
        !removing && std::any_of(rows.cbegin(), rows.cend(), [this](int row) { return !file(row).checked; });
    const bool canGo = !busy && removable() >= 0;
    m_toolBar->enable(offered, canGo);
    for (QAction *action : {m_open, m_explorer})
        action->setEnabled(offered);
    m_recycle->setEnabled(canGo);
    m_copy->setEnabled(!rows.isEmpty());
}

void MemberActions::copyPaths() const
{
    QStringList paths;
    for (const int row : selected())
        paths.append(file(row).fullPath());
    if (!paths.isEmpty())
        QGuiApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
}

void MemberActions::showMenu(const QPoint &where, const std::function<void(FLPopupMenu *)> &addOwn)
{
    if (!m_view->indexAt(where).isValid())
        return;
    auto *menu = new FLPopupMenu(m_view);
    menu->setObjectName(QStringLiteral("memberMenu"));
    for (QAction *action : {m_open, m_explorer, m_copy})
        menu->addWithShortcut(action);
    addOwn(menu);
    menu->addSeparator();
    menu->addWithShortcut(m_recycle);
    menu->popup(m_view->viewport()->mapToGlobal(where));
}

} // namespace duplicates
