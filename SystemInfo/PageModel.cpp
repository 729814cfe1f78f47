// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/PageModel.h"

#include "SystemInfo/engine/Report.h"

#include <QIcon>
#include <QStandardItemModel>

namespace systeminfo
{

namespace
{

void setIcon(QStandardItem &item, const Row &row)
{
    if (!row.image.isNull())
        item.setIcon(QIcon(QPixmap::fromImage(row.image)));
    else if (!row.icon.isEmpty())
        item.setIcon(QIcon(QStringLiteral(":/resources/images/") + row.icon));
}

QString hintOf(const Row &row)
{
    if (!row.hint.isEmpty())
        return row.hint;
    return row.openPath.isEmpty() ? QString() : Words::tr("Double-click opens %1").arg(row.openPath);
}

QString shownValue(const Row &row)
{
    // An empty value is shown as empty; only a problem adds text.
    return row.problem.isEmpty() ? row.value.text : spokenValue(row);
}

void append(QStandardItem &parent, const Row &row)
{
    auto *field = new QStandardItem(row.label);
    auto *value = new QStandardItem(shownValue(row));
    setIcon(*field, row);
    const QString hint = hintOf(row);
    const QString spoken = spokenValue(row);
    if (!spoken.isEmpty() && spoken != value->text())
        value->setAccessibleText(spoken);
    for (QStandardItem *item : {field, value}) {
        if (!hint.isEmpty())
            item->setToolTip(hint);
        if (!row.openPath.isEmpty())
            item->setData(row.openPath, openPathRole);
        if (!row.problem.isEmpty())
            item->setData(true, problemRole);
    }
    for (const Row &child : row.children)
        append(*field, child);
    parent.appendRow({field, value});
}

} // namespace

void fillModel(QStandardItemModel &model, const Page &page)
{
    model.clear();
    model.setHorizontalHeaderLabels({Words::tr("Field"), Words::tr("Value")});
    for (const Row &row : page.sections)
        append(*model.invisibleRootItem(), row);
}

const Row *rowAt(const Page &page, const QModelIndex &index)
{
    if (!index.isValid())
        return nullptr;
    const Row *parent = rowAt(page, index.parent());
    const std::vector<Row> &rows = parent ? parent->children : page.sections;
    const auto place = static_cast<std::size_t>(index.row());
    return place < rows.size() ? &rows[place] : nullptr;
}

QModelIndex indexOf(const QStandardItemModel &model, const std::vector<int> &row)
{
    QModelIndex index;
    for (const int place : row)
        index = model.index(place, 0, index);
    return index;
}

} // namespace systeminfo
