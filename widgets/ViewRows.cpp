// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ViewRows.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMutex>
#include <QTableView>
#include <QTimer>
#include <QTreeView>
#include <QWaitCondition>

#include <algorithm>
#include <stdexcept>

namespace viewrows
{

namespace
{

constexpr int sliceTime = 8;           // ms on the interface thread per slice
constexpr qsizetype maxWaiting = 5000; // rows read but not written yet

const QHeaderView *headerOf(const QAbstractItemView &view)
{
    if (const auto *table = qobject_cast<const QTableView *>(&view))
        return table->horizontalHeader();
    const auto *tree = qobject_cast<const QTreeView *>(&view);
    return tree ? tree->header() : nullptr;
}

// In visual order.
QList<int> columnsOf(const QAbstractItemView &view, Columns which)
{
    const QHeaderView *header = headerOf(view);
    QList<int> columns;
    for (int place = 0; header && place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        if (which == Columns::All || !header->isSectionHidden(column))
            columns.append(column);
    }
    return columns;
}

QStringList fields(const QModelIndex &row, const QList<int> &columns)
{
    QStringList texts;
    texts.reserve(columns.size());
    for (const int column : columns)
        texts.append(row.siblingAtColumn(column).data().toString());
    return texts;
}

// The row numbers on the path from the root to the row.
QList<int> placeOf(QModelIndex row)
{
    QList<int> place;
    for (; row.isValid(); row = row.parent())
        place.prepend(row.row());
    return place;
}

// Passes rows from the interface thread, which reads them, to the writing thread.
class RowQueue
{
public:
    enum class State { Open, Complete, Changed, Stopped };

    bool isFull()
    {
        const QMutexLocker lock(&m_mutex);
        return m_rows.size() >= maxWaiting;
    }

    void append(QList<QStringList> rows)
    {
        const QMutexLocker lock(&m_mutex);
        m_rows.append(std::move(rows));
        m_moved.wakeAll();
    }

    void end(State state)
    {
        const QMutexLocker lock(&m_mutex);
        if (m_state == State::Open)
            m_state = state;
        m_moved.wakeAll();
    }

    bool isOpen()
    {
        const QMutexLocker lock(&m_mutex);
        return m_state == State::Open;
    }

    bool next(QStringList &row)
    {
        const QMutexLocker lock(&m_mutex);
        while (m_rows.isEmpty() && m_state == State::Open)
            m_moved.wait(&m_mutex);
        if (m_state == State::Changed)
            throw std::runtime_error(
                QCoreApplication::translate("viewrows", "The table changed while it was being exported.")
                    .toStdString());
        if (m_state == State::Stopped || m_rows.isEmpty())
            return false;
        row = m_rows.takeFirst();
        return true;
    }

private:
    QMutex m_mutex;
    QWaitCondition m_moved;
    QList<QStringList> m_rows;
    State m_state = State::Open;
};

// Reads the rows of a model in slices, depth first, and deletes itself when done.
class RowReader : public QObject
{
public:
    RowReader(QAbstractItemModel *model, const QModelIndex &root, QList<int> columns,
              std::shared_ptr<RowQueue> queue)
        : QObject(model),
          m_columns(std::move(columns)),
          m_queue(std::move(queue))
    {
        const auto changed = [this] { finish(RowQueue::State::Changed); };
        connect(model, &QAbstractItemModel::modelAboutToBeReset, this, changed);
        connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, changed);
        connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, changed);
        connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, changed);
        connect(model, &QAbstractItemModel::rowsAboutToBeMoved, this, changed);
        connect(&m_timer, &QTimer::timeout, this, &RowReader::readSlice);
        m_levels.append({root, {}, model->rowCount(root), 0});
        m_timer.start(0);
    }

    // The model was destroyed.
    ~RowReader() override { m_queue->end(RowQueue::State::Changed); }

private:
    struct Level {
        QModelIndex parent;
        QString path; // ends in " > " unless it is the root
        int rows;
        int next;
    };

    void readSlice()
    {
        if (!m_queue->isOpen())
            return finish(RowQueue::State::Stopped);
        m_timer.setInterval(m_queue->isFull() ? sliceTime : 0);
        if (m_queue->isFull())
            return;
        QElapsedTimer clock;
        clock.start();
        QList<QStringList> read;
        while (!m_levels.isEmpty() && clock.elapsed() < sliceTime)
            readRow(read);
        m_queue->append(std::move(read));
        if (m_levels.isEmpty())
            finish(RowQueue::State::Complete);
    }

    void readRow(QList<QStringList> &read)
    {
        Level &level = m_levels.last();
        if (level.next == level.rows) {
            m_levels.removeLast();
            return;
        }
        const auto *model = static_cast<const QAbstractItemModel *>(parent());
        const QModelIndex row = model->index(level.next++, 0, level.parent);
        QStringList texts = fields(row, m_columns);
        texts.first().prepend(level.path);
        const QString path = texts.constFirst() + QStringLiteral(" > ");
        read.append(std::move(texts));
        if (model->hasChildren(row))
            m_levels.append({row, path, model->rowCount(row), 0});
    }

    void finish(RowQueue::State state)
    {
        m_timer.stop();
        m_queue->end(state);
        deleteLater();
    }

    QList<int> m_columns;
    std::shared_ptr<RowQueue> m_queue;
    QList<Level> m_levels;
    QTimer m_timer;
};

} // namespace

QList<int> shownColumns(const QAbstractItemView &view)
{
    return columnsOf(view, Columns::Shown);
}

QStringList titles(const QAbstractItemView &view, const QList<int> &columns)
{
    QStringList texts;
    for (const int column : columns)
        texts.append(view.model()->headerData(column, Qt::Horizontal).toString());
    return texts;
}

QModelIndexList selectedRows(const QAbstractItemView &view)
{
    if (!view.selectionModel())
        return {};
    QModelIndexList rows = view.selectionModel()->selectedRows(0);
    QList<std::pair<QList<int>, QModelIndex>> placed;
    for (const QModelIndex &row : std::as_const(rows))
        placed.append({placeOf(row), row});
    std::sort(placed.begin(), placed.end(), [](const auto &a, const auto &b) {
        return std::ranges::lexicographical_compare(a.first, b.first);
    });
    for (qsizetype i = 0; i < rows.size(); ++i)
        rows[i] = placed.at(i).second;
    return rows;
}

QString selectedText(const QAbstractItemView &view)
{
    qint64 count = 0;
    for (const QItemSelectionRange &range :
         view.selectionModel() ? view.selectionModel()->selection() : QItemSelection())
        count += range.height();
    if (count > maxCopied)
        return {};
    const QList<int> columns = shownColumns(view);
    QString text = QLatin1String("");
    for (const QModelIndex &row : selectedRows(view)) {
        QStringList texts = fields(row, columns);
        for (QString &field : texts)
            for (QChar &each : field)
                if (each == QLatin1Char('\t') || each == QLatin1Char('\n') || each == QLatin1Char('\r'))
                    each = QLatin1Char(' ');
        text += texts.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    text.chop(1);
    return text;
}

csv::Table table(const QAbstractItemView &view, const QString &suggestedName, Columns which)
{
    csv::Table table;
    const QList<int> columns = columnsOf(view, which);
    if (!view.model() || columns.isEmpty())
        return table;
    table.suggestedName = suggestedName;
    table.titles = titles(view, columns);
    auto queue = std::make_shared<RowQueue>();
    new RowReader(view.model(), view.rootIndex(), columns, queue);
    table.next = [queue](QStringList &row) { return queue->next(row); };
    table.stopWaiting = [queue] { queue->end(RowQueue::State::Stopped); };
    return table;
}

} // namespace viewrows
