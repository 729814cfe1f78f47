// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceList.h"
#include "core/WorkerThread.h"

#include <QAbstractTableModel>

#include <array>
#include <memory>
#include <vector>

// Sorts and filters the rows of a list.
class TraceListThread : public core::WorkerThread
{
    Q_OBJECT

public:
    TraceListThread(std::shared_ptr<const tracks::ScanResult> found, tracks::Item item,
                    tracks::ListOrder order);

    // Valid after done().
    std::vector<quint32> takeRows() { return std::move(m_rows); }
    const tracks::ListOrder &order() const { return m_order; }

protected:
    void work() override;

private:
    std::shared_ptr<const tracks::ScanResult> m_found;
    tracks::Item m_item;
    tracks::ListOrder m_order;
    std::vector<quint32> m_rows;
};

// The traces of one item, with check marks: unchecked ones are not cleared. Texts are made only for visible
// rows, and long lists are sorted on a worker thread.
class TracesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Entry, Place, Size, Time, State, Meaning, ColumnTotal };

    // `leftOut` has one entry per row, or is empty.
    TracesModel(std::shared_ptr<const tracks::ScanResult> found, tracks::Item item, std::vector<bool> leftOut,
                QObject *parent = nullptr);

    const tracks::ItemTraces &traces() const { return (*m_found)[m_item]; }
    const std::vector<bool> &leftOut() const { return m_leftOut[tracks::indexOf(m_item)]; }
    // Returns at once; the rows change when the search is done.
    void search(const QString &words);
    // Applies to the shown rows, or to the given ones; kept traces are not changed.
    void setAllChosen(bool chosen);
    void setChosen(const QModelIndexList &rows, bool chosen);
    // How many rows will be cleared, and the total size of the files among them.
    int chosenCount() const { return m_chosenCount; }
    quint64 chosenBytes() const { return m_chosenBytes; }
    bool isArranging() const { return m_thread != nullptr; }

    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // Longer lists are sorted on a worker thread.
    static constexpr std::size_t maxArrangedAtOnce = 2'000;

signals:
    void choiceChanged();
    void arranged(); // the rows match the latest requested order and words

private:
    std::size_t rowOf(const QModelIndex &index) const
    {
        return m_rows[static_cast<std::size_t>(index.row())];
    }
    QString text(std::size_t row, int column) const;
    void arrange();
    void takeRows();
    void applyRows(std::vector<quint32> rows);
    void countChosen();
    void reportChoice();

    std::shared_ptr<const tracks::ScanResult> m_found;
    tracks::Item m_item;
    tracks::LeftOut m_leftOut; // of this item
    tracks::ListOrder m_order;
    std::vector<quint32> m_rows; // the shown rows, in order
    int m_chosenCount = 0;
    quint64 m_chosenBytes = 0;
    core::WorkerPointer<TraceListThread> m_thread;
};
