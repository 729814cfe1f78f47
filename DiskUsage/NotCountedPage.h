// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <vector>

class PathActions;
class ResultTable;

// The folders that a scan could not count completely, with the reason: incomplete sums must be recognisable.
class NotCountedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Path, Reason, ColumnTotal };
    enum class Why { Excluded, Unreadable, ReadInPart, Cycle };
    struct Row {
        QString path;
        Why why;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setResult(const diskusage::ScanResult *result); // null clears it
    // A folder of the result was rescanned: the entries of `now` replace the rows below it.
    void replaceFolder(const QString &path, const diskusage::ScanResult &now);
    const std::vector<Row> &rows() const { return m_rows; }
    int count(Why why) const;
    static QString reason(Why why);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    void append(const diskusage::ScanResult &result);
    std::vector<int> sortRows(); // returns the former position of each row

    std::vector<Row> m_rows;
    int m_sortColumn = -1; // -1: scan order
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

class NotCountedPage : public QWidget
{
    Q_OBJECT

public:
    explicit NotCountedPage(QWidget *parent = nullptr);

    void setResult(const diskusage::ScanResult *result);
    void replaceFolder(const QString &path, const diskusage::ScanResult &now);
    const NotCountedModel &model() const { return *m_model; }
    ResultTable *table() const { return m_table; }

signals:
    void failed(const QString &message);

private:
    NotCountedModel *m_model;
    ResultTable *m_table;
    PathActions *m_actions;
};
