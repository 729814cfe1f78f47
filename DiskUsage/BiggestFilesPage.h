// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <QWidget>

#include <memory>
#include <vector>

class BiggestFilesModel;
class PathActions;
class QComboBox;
class QLabel;
class ResultTable;

// The biggest files of the scan, and of each folder that was scanned again later.
class BiggestFilesPage : public QWidget
{
    Q_OBJECT

public:
    explicit BiggestFilesPage(QWidget *parent = nullptr);
    ~BiggestFilesPage() override;

    // Null detaches the model and discards the lists of rescanned folders.
    void setModel(BiggestFilesModel *model, const QString &folder = {});
    // Adds the list of a rescanned folder, replacing an earlier one of the same folder; shown when the user
    // selects it.
    void addFolder(const QString &folder, const std::vector<diskusage::BiggestFile> &files);
    ResultTable *table() const { return m_table; }

signals:
    void failed(const QString &message);

private:
    struct List {
        QString folder;
        std::unique_ptr<BiggestFilesModel> own; // null for the scan's list
        BiggestFilesModel *model;
    };

    void buildLayout();
    void connectAll();
    void showList(int index);
    BiggestFilesModel *shownModel() const;
    QString currentPath() const;

    std::vector<List> m_lists;
    QLabel *m_title;
    QComboBox *m_choice;
    ResultTable *m_table;
    PathActions *m_actions;
};
