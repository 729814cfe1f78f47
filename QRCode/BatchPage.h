// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/Export.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <functional>

class JobHost;
class NoticeBar;
class QComboBox;
class QLabel;
class QPushButton;
class ResultTable;
class ScanPage;

// The rows of a list and their outcomes.
class QRCodeBatchModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void setRows(QList<qr::BatchRow> rows);
    void setResults(QList<qr::Saved> results); // in row order
    const QList<qr::BatchRow> &rows() const { return m_rows; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QList<qr::BatchRow> m_rows;
    QList<qr::Saved> m_results;
};

// Creates many codes at once, from a CSV file.
class QRCodeBatchPage : public QWidget
{
    Q_OBJECT

public:
    // Files use the style that `style` returns at the start. `jobs` and `progress`, which runs and shows the
    // job, must outlive the page.
    QRCodeBatchPage(JobHost *jobs, ScanPage *progress, std::function<qr::Style()> style,
                    QWidget *parent = nullptr);

    void readList(const QString &file);

signals:
    void back();
    void jobStarted();
    void jobEnded();

private:
    void buildPage();
    void chooseList();
    void create();
    void showEnd(QList<qr::Saved> results, bool cancelled);

    JobHost *m_jobs;
    ScanPage *m_progress;
    std::function<qr::Style()> m_style;
    QRCodeBatchModel *m_model;
    NoticeBar *m_notice;
    ResultTable *m_table;
    QComboBox *m_format;
    QPushButton *m_create;
};
