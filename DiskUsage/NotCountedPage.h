// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/CsvExport.h"
#include "DiskUsage/engine/Scan.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <vector>

class FLTableView;
class PathActions;

// The folders that a scan left out, with the reason: a sum that misses something must say so.
class NotCountedModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Path, Reason, ColumnTotal };
    enum class Why { Excluded, Unreadable, Cycle };
    struct Row {
        QString path;
        Why why;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void setResult(const diskusage::ScanResult *result); // null empties it
    const std::vector<Row> &rows() const { return m_rows; }
    int count(Why why) const;
    static QString reason(Why why);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    std::vector<Row> m_rows;
};

class NotCountedPage : public QWidget
{
    Q_OBJECT

public:
    explicit NotCountedPage(QWidget *parent = nullptr);

    void setResult(const diskusage::ScanResult *result);
    const NotCountedModel &model() const { return *m_model; }
    diskusage::CsvTable csvTable() const;

signals:
    void exportTable();
    void failed(const QString &message);

private:
    NotCountedModel *m_model;
    FLTableView *m_table;
    PathActions *m_actions;
};
