// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Run.h"

#include <QAbstractTableModel>
#include <QWidget>

class NoticeBar;
class PageHeader;
class QPushButton;
class ResultTable;

// The outcome for each file of a run.
class ConversionResultModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { File, State, Reason, SourceSize, OutputSize, Output, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setResults(std::vector<conversion::FileResult> results);
    const std::vector<conversion::FileResult> &results() const { return m_results; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    std::vector<conversion::FileResult> m_results;
};

// The results of a finished run, with the reasons of failures.
class ConvertResultPage : public QWidget
{
    Q_OBJECT

public:
    explicit ConvertResultPage(QWidget *parent = nullptr);

    void showResults(std::vector<conversion::FileResult> results, bool cancelled, qint64 milliseconds);
    void showError(const QString &error); // concerns the whole run; empty for none
    // Sources that may succeed if they are tried again.
    QStringList failedSources() const;

signals:
    void back();
    void tryAgain();

private:
    void buildActions();
    void openOutput(bool inFolder);

    PageHeader *m_header;
    NoticeBar *m_notice;
    ResultTable *m_table;
    ConversionResultModel *m_model;
    QPushButton *m_again;
};
