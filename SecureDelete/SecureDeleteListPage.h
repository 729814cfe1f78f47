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

// The page "Files & Folders": what is to be destroyed, and what is to be known of it.
class SecureDeleteListPage : public QWidget
{
    Q_OBJECT

public:
    explicit SecureDeleteListPage(securedelete::ItemReader::MediumOf mediumOf, QWidget *parent = nullptr);
    ~SecureDeleteListPage() override;

    securedelete::ItemModel &model() { return *m_model; }
    bool overwritesOtherNames() const;
    // Reading what was added, or counting what folders hold.
    bool isReading() const { return m_reader != nullptr; }
    // The method in force, for the line of totals.
    void showMethod(const QString &method);

public slots:
    // In any spelling; read on a thread of their own.
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
    QStringList m_waiting; // to be read after those that are being read
    int m_nextId = 0;
    int m_doubles = 0; // of the reader that runs
    core::WorkerPointer<securedelete::ItemReader> m_reader;
};
