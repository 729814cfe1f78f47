// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/LoadPageThread.h"

#include <QElapsedTimer>
#include <QStandardItemModel>
#include <QTimer>
#include <QWidget>

#include <functional>

class FieldValueTree;
class NoticeBar;
class WrappedLabel;

namespace systeminfo
{
class PageBar;
}

// One page of facts: a toolbar, notices about missing data, and the tree. Data is gathered on creation and on
// refresh; the model is attached to the view once the loader has filled it. The classes in pages/ only
// declare their parts.
class InfoPageForm : public QWidget
{
    Q_OBJECT

public:
    ~InfoPageForm() override;

    systeminfo::PageId id() const { return m_id; }
    // Null before the page has been gathered, and during a refresh.
    const systeminfo::Page *page() const { return m_isLoaded ? &m_page : nullptr; }
    systeminfo::PageBar *bar() const { return m_bar; }

    void refresh();
    // Selects a row by its position path, beginning with the section; does nothing if it does not exist.
    void showRow(const std::vector<int> &row);
    void notify(const QString &notice, bool isWarning = true);

signals:
    void loaded();

protected:
    using MakeLoader = std::function<LoadPageThread *(QStandardItemModel *model)>;

    InfoPageForm(systeminfo::PageId id, const QString &treeName, MakeLoader makeLoader, QWidget *parent);

    template <class Loader>
    static LoadPageThread *make(QStandardItemModel *model)
    {
        return new Loader(model);
    }

private slots:
    void onProcessFinish();

private:
    void buildActions();
    void load();
    void showUptime();
    void open(const QModelIndex &index);
    void copyValue();
    void copySection();
    void copyPage();

    const systeminfo::PageId m_id;
    const MakeLoader m_makeLoader;
    systeminfo::PageBar *m_bar;
    NoticeBar *m_notice;
    WrappedLabel *m_summary;
    FieldValueTree *m_tree;
    QStandardItemModel m_model;
    systeminfo::Page m_page;
    bool m_isLoaded = false;
    QElapsedTimer m_sinceLoad;
    quint64 m_uptimeAtLoad = 0;                   // seconds
    QTimer m_minute;                              // active while a page with an uptime is shown
    core::WorkerPointer<LoadPageThread> m_loader; // last member, so destroyed first: it fills the model
};
