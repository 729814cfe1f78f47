// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/BinModel.h"
#include "widgets/NoticeBar.h"

#include <QWidget>

class QLabel;
class QPushButton;
class ResultTable;

// The page "Recycle Bin": the contents of the user's recycle bins.
class SecureDeleteBinPage : public QWidget
{
    Q_OBJECT

public:
    explicit SecureDeleteBinPage(securedelete::BinReader::BinFolders folders, QWidget *parent = nullptr);
    ~SecureDeleteBinPage() override;

    bool isReading() const { return m_reader != nullptr; }
    std::vector<securedelete::BinRow> allRows() const { return m_model->rows(); }
    std::vector<securedelete::BinRow> selectedRows() const;

public slots:
    void refresh();

signals:
    void deleteRequested(bool all);
    void told(NoticeBar::Kind kind, const QString &notice);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void buildLayout();
    void buildList();
    void onReaderDone();
    void enableButtons();

    const securedelete::BinReader::BinFolders m_folders;
    securedelete::BinModel *m_model;
    ResultTable *m_list;
    QPushButton *m_refresh;
    QPushButton *m_deleteSelected;
    QPushButton *m_empty;
    QLabel *m_totals;
    core::WorkerPointer<securedelete::BinReader> m_reader;
};
