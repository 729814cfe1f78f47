// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/TracesModel.h"

#include "TrackCleaner/TraceTexts.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"

#include <utility>

using tracks::Item;
using tracks::Keep;
using tracks::ListKey;

namespace
{

ListKey keyOf(int column)
{
    switch (column) {
    case TracesModel::Entry:
        return ListKey::Entry;
    case TracesModel::Place:
        return ListKey::Place;
    case TracesModel::Size:
        return ListKey::Size;
    case TracesModel::Time:
        return ListKey::Time;
    case TracesModel::State:
        return ListKey::Keep;
    default:
        return ListKey::Found;
    }
}

} // namespace

TraceListThread::TraceListThread(std::shared_ptr<const tracks::ScanResult> found, Item item,
                                 tracks::ListOrder order)
    : m_found(std::move(found)),
      m_item(item),
      m_order(std::move(order))
{
}

void TraceListThread::work()
{
    m_rows = tracks::arranged(*m_found, m_item, m_order, cancelFlag());
}

TracesModel::TracesModel(std::shared_ptr<const tracks::ScanResult> found, Item item,
                         std::vector<bool> leftOut, QObject *parent)
    : QAbstractTableModel(parent),
      m_found(std::move(found)),
      m_item(item),
      m_rows(tracks::arranged(*m_found, item, {}, {}))
{
    leftOut.resize(m_rows.size());
    m_leftOut[tracks::indexOf(item)] = std::move(leftOut);
    countChosen();
}

void TracesModel::countChosen()
{
    m_chosenCount = 0;
    m_chosenBytes = 0;
    for (std::size_t row = 0; row < traces().count(); ++row) {
        if (!tracks::isChosen(*m_found, m_leftOut, m_item, row))
            continue;
        ++m_chosenCount;
        m_chosenBytes += traces().isFile(row) ? traces().sizeOf(row) : 0;
    }
}

void TracesModel::search(const QString &words)
{
    m_order.words = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    arrange();
}

void TracesModel::sort(int column, Qt::SortOrder order)
{
    m_order.key = keyOf(column);
    m_order.ascending = order == Qt::AscendingOrder;
    arrange();
}

void TracesModel::arrange()
{
    if (traces().count() <= maxArrangedAtOnce) {
        applyRows(tracks::arranged(*m_found, m_item, m_order, {}));
        return;
    }
    m_thread.reset(new TraceListThread(m_found, m_item, m_order));
    connect(m_thread.get(), &core::WorkerThread::done, this, &TracesModel::takeRows);
    m_thread->start();
}

void TracesModel::takeRows()
{
    const core::WorkerPointer<TraceListThread> thread = std::move(m_thread);
    if (thread->error().isEmpty())
        applyRows(thread->takeRows());
}

void TracesModel::applyRows(std::vector<quint32> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
    emit arranged();
}

void TracesModel::setAllChosen(bool chosen)
{
    for (const quint32 row : m_rows)
        m_leftOut[tracks::indexOf(m_item)][row] = !chosen;
    reportChoice();
}

void TracesModel::setChosen(const QModelIndexList &rows, bool chosen)
{
    for (const QModelIndex &row : rows)
        m_leftOut[tracks::indexOf(m_item)][rowOf(row)] = !chosen;
    reportChoice();
}

void TracesModel::reportChoice()
{
    countChosen();
    if (!m_rows.empty())
        emit dataChanged(index(0, Entry), index(rowCount() - 1, State));
    emit choiceChanged();
}

int TracesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TracesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnTotal);
}

QString TracesModel::text(std::size_t row, int column) const
{
    switch (column) {
    case Entry:
        return tracks::entryText(*m_found, m_item, row);
    case Place:
        return tracks::placeText(*m_found, m_item, row);
    case Size:
        return core::sizeText(traces().sizeOf(row));
    case Time: {
        const quint64 time = tracks::timeOf(traces(), row);
        return time == 0 ? QString()
                         : platform::localFileTime(time).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    }
    case State:
        return tracks::stateText(*m_found, m_leftOut, m_item, row);
    default:
        return tracks::traceText(*m_found, m_item, row);
    }
}

QVariant TracesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const std::size_t row = rowOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return text(row, index.column());
    case Qt::CheckStateRole:
        if (index.column() == Entry)
            return tracks::isChosen(*m_found, m_leftOut, m_item, row) ? Qt::Checked : Qt::Unchecked;
        break;
    case Qt::TextAlignmentRole:
        if (index.column() == Size)
            return QVariant::fromValue(Qt::AlignTrailing | Qt::AlignVCenter);
        break;
    default:
        break;
    }
    return {};
}

bool TracesModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole || traces().keep(rowOf(index)) != Keep::No)
        return false;
    setChosen({index}, value.toInt() == Qt::Checked);
    return true;
}

QVariant TracesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == Size)
        return QVariant::fromValue(Qt::AlignTrailing | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnTotal> titles{tr("Entry"), tr("Path or value"), tr("Size"),
                                                  tr("Date"),  tr("State"),         tr("What it is")};
    return titles[static_cast<std::size_t>(section)];
}

// Kept traces have no check mark to change.
Qt::ItemFlags TracesModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && index.column() == Entry && traces().keep(rowOf(index)) == Keep::No)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}
