// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/IconListView.h"

#include "ExtractIcon/IconListModel.h"
#include "widgets/Controls.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QRegularExpression>
#include <QSortFilterProxyModel>

#include <algorithm>

namespace icons
{

IconListView::IconListView(QAbstractItemModel *records, QWidget *parent)
    : QListView(parent),
      m_proxy(new QSortFilterProxyModel(this))
{
    m_proxy->setSourceModel(records);
    setObjectName(QStringLiteral("listView"));
    setAccessibleName(tr("Icons"));
    setModel(m_proxy);
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setLayoutMode(QListView::Batched);
    setIconSize(QSize(IconListModel::iconSide, IconListModel::iconSide));
    setGridSize(IconListModel::cellSize + QSize(theme::spaceTight, theme::spaceTight));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    addAction(controls::action(
        this, {.objectName = "exportAction", .text = tr("Export Icon"), .key = Qt::Key_Return},
        [this] { emit exportRequested(); }));
    addAction(controls::action(
        this, {.objectName = "copyAction", .text = tr("Copy Image"), .key = QKeySequence::Copy},
        [this] { emit copyRequested(); }));
}

int IconListView::rowOf(const QModelIndex &shown) const
{
    return m_proxy->mapToSource(shown).row();
}

QList<int> IconListView::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : selectedIndexes())
        rows.append(rowOf(index));
    std::ranges::sort(rows);
    return rows;
}

int IconListView::currentRow() const
{
    return rowOf(currentIndex());
}

void IconListView::selectFirst()
{
    setCurrentIndex(m_proxy->index(0, 0));
}

int IconListView::showMatches(const QString &number)
{
    const QString wanted = number.trimmed();
    m_proxy->setFilterRegularExpression(
        QRegularExpression(QRegularExpression::escape(wanted), QRegularExpression::CaseInsensitiveOption));
    const int found = m_proxy->rowCount();
    for (int row = 0; row < found; ++row) {
        if (m_proxy->index(row, 0).data().toString() == wanted) {
            setCurrentIndex(m_proxy->index(row, 0));
            return found;
        }
    }
    if (found > 0 && !number.isEmpty())
        selectFirst();
    return found;
}

void IconListView::showAll()
{
    m_proxy->setFilterRegularExpression(QString());
}

} // namespace icons
