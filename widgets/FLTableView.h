// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTableView>

// A flat list of any length, with the suite's rows. A tree view visits every row when it opens; a table with
// fixed row heights does not, and stays quick with a million. Above typeahead::maxRows rows typing looks for
// none.
class FLTableView : public QTableView
{
    Q_OBJECT

public:
    explicit FLTableView(QWidget *parent = nullptr);

    // Hides all columns but these; after setModel().
    void showColumns(const QList<int> &columns);

    void keyboardSearch(const QString &search) override;
};
