// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/CsvFile.h"

#include <QWidget>

class DataFilesModel;
class EmptyState;
class FLTableView;
class FLTreeView;
class PathActions;
class QLabel;
class QStackedLayout;
class QStandardItemModel;

// The file types with their file counts, totals and shares of the scan, and the files of the selected type.
class FileTypesPage : public QWidget
{
    Q_OBJECT

public:
    explicit FileTypesPage(QWidget *parent = nullptr);

    // `total`, in bytes, is the base of the shares. Null detaches the model.
    void setModel(DataFilesModel *model, quint64 total = 0);
    // Updates both lists after the model's contents were replaced.
    void refresh(quint64 total);
    csv::Table csvTable() const;
    csv::Table typesTable() const;
    PathActions *actions() const { return m_actions; }

signals:
    void exportTable();
    void exportTypes();
    void failed(const QString &message);

private:
    enum TypeColumn { TypeName, TypeShare, TypeSize, TypeCount, TypeColumnTotal };

    void buildTypes();
    void buildFiles();
    void buildLayout();
    void connectAll();
    void connectModel();
    void addTypesMenu();
    void fillTypes(quint64 total);
    void showSelectedType();
    void showTitle();
    QString currentPath() const;

    DataFilesModel *m_model = nullptr;
    QStandardItemModel *m_typeModel;
    FLTreeView *m_types;
    QLabel *m_title;
    QLabel *m_note; // about files of no type
    FLTableView *m_table;
    EmptyState *m_empty;
    QStackedLayout *m_stack;
    PathActions *m_actions;
    bool m_sorting = false;
};
