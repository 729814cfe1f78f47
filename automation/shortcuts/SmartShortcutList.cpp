// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/shortcuts/SmartShortcutList.h"

#include "widgets/Controls.h"

#include <QHeaderView>
#include <QStandardItemModel>

namespace automation
{

namespace
{

enum Column { nameColumn, programColumn, priorityColumn, placeColumn, stateColumn, columnCount };
constexpr int indexRole = Qt::UserRole + 1; // index into m_shortcuts

QString stateText(const SmartShortcut &shortcut)
{
    if (!shortcut.start)
        return SmartShortcutList::tr("Cannot be read");
    if (!shortcut.programIsThere)
        return SmartShortcutList::tr("Program not found");
    return shortcut.starterIsThere ? SmartShortcutList::tr("Ready")
                                   : SmartShortcutList::tr("Made by another installation");
}

} // namespace

bool isReady(const SmartShortcut &shortcut)
{
    return shortcut.start && shortcut.programIsThere && shortcut.starterIsThere;
}

SmartShortcutList::SmartShortcutList(QWidget *parent)
    : FLTreeView(parent),
      m_model(new QStandardItemModel(0, columnCount, this))
{
    m_model->setHorizontalHeaderLabels({tr("Name"), tr("Program"), tr("Priority"), tr("Place"), tr("State")});
    setObjectName(QStringLiteral("treeView"));
    setAccessibleName(tr("Smart shortcuts"));
    setModel(m_model);
    setRootIsDecorated(false);
    setSortingEnabled(true);
    sortByColumn(nameColumn, Qt::AscendingOrder);
    setPlaceholder(tr("No smart shortcuts yet. \"Add\" makes the first one, and so does a program or a "
                      "shortcut that is dropped here."));
    header()->resizeSection(nameColumn, 150);
    header()->resizeSection(priorityColumn, 100);
    header()->resizeSection(placeColumn, 85);
    header()->resizeSection(stateColumn, 185);
    header()->setStretchLastSection(false);
    setStretchColumn(programColumn, 120);
}

void SmartShortcutList::setShortcuts(QList<SmartShortcut> shortcuts, const QString &selected)
{
    m_shortcuts = std::move(shortcuts);
    setSortingEnabled(false); // otherwise rows would move while they are filled
    m_model->setRowCount(0);
    m_model->setRowCount(static_cast<int>(m_shortcuts.size()));
    for (int row = 0; row < m_model->rowCount(); ++row)
        showRow(row, m_shortcuts.at(row));
    setSortingEnabled(true);
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const int index = m_model->index(row, nameColumn).data(indexRole).toInt();
        if (m_shortcuts.at(index).item.path.compare(selected, Qt::CaseInsensitive) == 0)
            setCurrentIndex(m_model->index(row, nameColumn));
    }
}

void SmartShortcutList::showRow(int row, const SmartShortcut &shortcut)
{
    const bool readable = shortcut.start.has_value();
    const QStringList texts{shortcut.name, readable ? shortcut.start->program : shortcut.file.target,
                            readable ? priorityName(shortcut.start->priority) : QString(), shortcut.place,
                            stateText(shortcut)};
    for (int column = 0; column < columnCount; ++column) {
        auto *item = new QStandardItem(texts.at(column));
        item->setToolTip(column == placeColumn                 ? shortcut.item.path
                         : column == programColumn && readable ? commandLineOf(*shortcut.start)
                                                               : texts.at(column));
        m_model->setItem(row, column, item);
    }
    m_model->item(row, nameColumn)->setData(row, indexRole);
    if (!shortcut.icon.isNull())
        m_model->item(row, nameColumn)->setIcon(QPixmap::fromImage(shortcut.icon));
    if (!isReady(shortcut))
        m_model->item(row, stateColumn)->setIcon(controls::image("Warning16"));
}

const SmartShortcut *SmartShortcutList::current() const
{
    const QModelIndexList rows = selectionModel()->selectedRows(nameColumn);
    return rows.isEmpty() ? nullptr : &m_shortcuts.at(rows.first().data(indexRole).toInt());
}

} // namespace automation
