// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Search.h"

#include <QStandardItemModel>
#include <QWidget>

class QCompleter;
class QToolButton;
class SearchLine;

namespace systeminfo
{

// The bar above a page: search over all pages, and commands for this page and the whole report.
class PageBar : public QWidget
{
    Q_OBJECT

public:
    explicit PageBar(QWidget *parent = nullptr);

    void setLoading(bool loading);
    // Shows the results of searched() below the line edit, followed by `note` if it is not empty.
    void showHits(const std::vector<Hit> &hits, const QString &note);
    SearchLine *searchLine() const { return m_search; }

signals:
    void searched(const QString &text);
    void hitChosen(const Hit &hit);
    void refreshRequested();
    void copyRequested();
    void saveRequested();
    void compareRequested();

private:
    void buildMenu(QToolButton *button);
    void choose(const QModelIndex &index);

    SearchLine *m_search;
    QToolButton *m_refresh;
    QStandardItemModel m_lines; // declared before the list that uses it
    QCompleter *m_list;
    std::vector<Hit> m_hits;
};

} // namespace systeminfo
