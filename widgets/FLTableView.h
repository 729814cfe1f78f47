// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

// A flat list of any length with the suite's row style. A tree view visits every row when it opens; a table
// with fixed row heights does not, and stays fast with a million rows. Type-ahead search is disabled above
// typeahead::maxRows rows.
class FLTableView : public QTableView
{
    Q_OBJECT

public:
    explicit FLTableView(QWidget *parent = nullptr);

    // Hides all other columns; call after setModel().
    void showColumns(const QList<int> &columns);

    void keyboardSearch(const QString &search) override;
};
