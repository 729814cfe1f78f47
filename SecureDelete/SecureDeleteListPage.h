// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/ItemModel.h"
#include "widgets/NoticeBar.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;
class ResultTable;
class WrappedLabel;

// The page "Files & Folders": the items to destroy, with warnings about them.
class SecureDeleteListPage : public QWidget
{
    Q_OBJECT

public:
    explicit SecureDeleteListPage(securedelete::ItemReader::MediumOf mediumOf, QWidget *parent = nullptr);
    ~SecureDeleteListPage() override;

    securedelete::ItemModel &model() { return *m_model; }
    bool overwritesOtherNames() const;
    // True while added items are read or folders are counted.
    bool isReading() const { return m_reader != nullptr; }
    // The current method, for the line of totals.
    void showMethod(const QString &method);

public slots:
    // Accepts any spelling of a path; reads on a worker thread.
    void addPaths(const QStringList &paths);

signals:
    void deleteRequested();
    void told(NoticeBar::Kind kind, const QString &notice);

private slots:
    void on_addFilesButton_clicked();
    void on_addFolderButton_clicked();
    void on_removeButton_clicked();
    void on_clearButton_clicked();

private:
    void buildList();
    void buildBottom();
    void readNext();
    void onReaderDone();
    void takeRows(const std::vector<securedelete::ListRow> &rows);
    void showTotals();
    QString mediumText(const securedelete::ItemTotals &totals) const;

    const securedelete::ItemReader::MediumOf m_mediumOf;
    securedelete::ItemModel *m_model;
    ResultTable *m_list;
    QPushButton *m_remove = nullptr;
    QPushButton *m_clear = nullptr;
    QPushButton *m_delete = nullptr;
    QCheckBox *m_otherNames;
    WrappedLabel *m_medium;
    QLabel *m_totals;
    QString m_method;
    QStringList m_waiting; // waiting for the current reader to finish
    int m_nextId = 0;
    int m_doubles = 0; // duplicates found by the current reader
    core::WorkerPointer<securedelete::ItemReader> m_reader;
};
