// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/NotCountedPage.h"

#include "DiskUsage/PathActions.h"
#include "DiskUsage/Settings.h"
#include "widgets/Controls.h"
#include "widgets/FLTableView.h"
#include "widgets/ResultView.h"
#include "widgets/Theme.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

using diskusage::ScanResult;

void NotCountedModel::setResult(const ScanResult *result)
{
    beginResetModel();
    m_rows.clear();
    if (result)
        append(*result);
    sortRows();
    endResetModel();
}

void NotCountedModel::replaceFolder(const QString &path, const ScanResult &now)
{
    const QString below = path + QLatin1Char('\\');
    beginResetModel();
    std::erase_if(m_rows, [&](const Row &row) { return row.path == path || row.path.startsWith(below); });
    append(now);
    sortRows();
    endResetModel();
}

void NotCountedModel::append(const ScanResult &result)
{
    for (const QString &path : result.excluded)
        m_rows.push_back({path, Why::Excluded});
    for (const QString &path : result.unreadable)
        m_rows.push_back({path, Why::Unreadable});
    for (const QString &path : result.readInPart)
        m_rows.push_back({path, Why::ReadInPart});
    for (std::size_t i = 0; i < result.folders.size(); ++i)
        if (result.folders[i].cycle)
            m_rows.push_back({result.path(static_cast<int>(i)), Why::Cycle});
}

int NotCountedModel::count(Why why) const
{
    return static_cast<int>(
        std::count_if(m_rows.begin(), m_rows.end(), [why](const Row &row) { return row.why == why; }));
}

QString NotCountedModel::reason(Why why)
{
    switch (why) {
    case Why::Excluded:
        return tr("Left out by the options");
    case Why::Unreadable:
        return tr("Could not be read");
    case Why::ReadInPart:
        return tr("Could be read in part only");
    default:
        return tr("A link to a folder above it, where it is counted");
    }
}

int NotCountedModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int NotCountedModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnTotal);
}

QVariant NotCountedModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    const Row &row = m_rows[static_cast<std::size_t>(index.row())];
    return index.column() == Path ? row.path : reason(row.why);
}

QVariant NotCountedModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == Path ? tr("Path") : tr("Reason");
}

void NotCountedModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0)
        return;
    m_sortColumn = column;
    m_sortOrder = order;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<int> before = sortRows();
    std::vector<int> now(before.size());
    for (std::size_t row = 0; row < before.size(); ++row)
        now[static_cast<std::size_t>(before[row])] = static_cast<int>(row);
    const QModelIndexList kept = persistentIndexList();
    QModelIndexList moved;
    for (const QModelIndex &index : kept)
        moved.append(createIndex(now[static_cast<std::size_t>(index.row())], index.column()));
    changePersistentIndexList(kept, moved);
    emit layoutChanged({}, VerticalSortHint);
}

std::vector<int> NotCountedModel::sortRows()
{
    std::vector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    if (m_sortColumn < 0)
        return order;
    std::stable_sort(order.begin(), order.end(), [this](int left, int right) {
        const bool ascending = m_sortOrder == Qt::AscendingOrder;
        const Row &a = m_rows[static_cast<std::size_t>(ascending ? left : right)];
        const Row &b = m_rows[static_cast<std::size_t>(ascending ? right : left)];
        return m_sortColumn == Path ? a.path.compare(b.path, Qt::CaseInsensitive) < 0 : a.why < b.why;
    });
    std::vector<Row> rows;
    rows.reserve(m_rows.size());
    for (const int row : order)
        rows.push_back(std::move(m_rows[static_cast<std::size_t>(row)]));
    m_rows = std::move(rows);
    return order;
}

NotCountedPage::NotCountedPage(QWidget *parent)
    : QWidget(parent),
      m_model(new NotCountedModel(this)),
      m_table(new ResultTable(QStringLiteral("notCountedTableView"),
                              tr("Folders that were not counted in full"), this)),
      m_actions(new PathActions(m_table, [this] { return m_table->current().data().toString(); }))
{
    m_table->setModel(m_model);
    m_table->setEmpty(controls::image("Info16"), tr("Every folder was counted in full"));
    QHeaderView *header = m_table->table()->horizontalHeader();
    header->setSectionResizeMode(NotCountedModel::Path, QHeaderView::Stretch);
    header->resizeSection(NotCountedModel::Reason, fontMetrics().horizontalAdvance(
                                                       NotCountedModel::reason(NotCountedModel::Why::Cycle)) +
                                                       3 * theme::space);
    m_table->table()->sortByColumn(NotCountedModel::Path, Qt::AscendingOrder);
    m_table->keepColumns(diskusage::notCountedColumns);

    auto *note = new QLabel(
        tr("The totals miss some or all of what is in these folders, unless it is counted elsewhere."), this);
    note->setWordWrap(true);
    theme::makeMuted(note);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::spaceSnug, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(note);
    layout->addWidget(m_table, 1);
    connect(m_actions, &PathActions::failed, this, &NotCountedPage::failed);
}

void NotCountedPage::setResult(const ScanResult *result)
{
    m_model->setResult(result);
}

void NotCountedPage::replaceFolder(const QString &path, const ScanResult &now)
{
    m_model->replaceFolder(path, now);
}
