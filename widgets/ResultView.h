// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"
#include "widgets/CsvExporter.h"
#include "widgets/ViewRows.h"

#include <QAbstractItemView>
#include <QWidget>

class EmptyState;
class FLPopupMenu;
class FLTableView;
class FLTreeView;
class QHBoxLayout;
class QSortFilterProxyModel;
class QStackedLayout;
class SearchLine;

// A list or tree of results with the usual features: full-row selection, a context menu (also by the Menu
// key), copying (Ctrl+C, fields separated by tabs), CSV export (Ctrl+S), a column menu on the header, an
// optional search line (Ctrl+F), and a text for the empty state. Works with any model. The caller owns the
// model, which must be destroyed or replaced by null before the data that it reads.
//
//     m_list = new ResultTable(u"resultTableView", tr("Removed files"), this);
//     m_list->setModel(m_model);
//     m_list->setEmpty(controls::image("Info16"), tr("Nothing was removed"));
//     m_list->addAction(open);            // own actions come first in the context menu
//     connect(m_list, &ResultView::told, m_notice, ...);
//
// The model does the sorting: a click on a header calls QAbstractItemModel::sort(). Rows that are not visible
// are not queried, so a million rows are as fast as ten, except when searching.
class ResultView : public QWidget
{
    Q_OBJECT

public:
    enum class Search {
        None,
        Filter, // rows whose texts contain the words; reads every row, so for up to maxFiltered rows
        Own     // the caller filters, see searched()
    };
    static constexpr int maxFiltered = 20'000;

    // Takes ownership of `view`. `name` describes the content, as accessible name and as name of the exported
    // file.
    ResultView(QAbstractItemView *view, const QString &objectName, const QString &name,
               QWidget *parent = nullptr);
    ~ResultView() override;

    void setModel(QAbstractItemModel *model);
    QAbstractItemModel *model() const { return m_model; }
    QAbstractItemView *view() const { return m_view; }
    void setSearch(Search search);
    SearchLine *searchLine() const { return m_search; } // null for Search::None
    // For a page with a button of its own for that shortcut: ambiguous shortcuts would do nothing.
    void dropExportKey();
    // Keeps widths, order, visibility and sorting of the columns in the setting, which must outlive the view.
    // Call after setting the default widths; again whenever another model was set.
    void keepColumns(const settings::Text &setting);
    // Exports hidden columns as well, for example numbers whose texts are shown.
    void exportHiddenColumns() { m_exported = viewrows::Columns::All; }
    void setEmpty(const QIcon &icon, const QString &title, const QString &text = {});
    // Adds it to the row of the search line, on the left.
    void addToolWidget(QWidget *widget);

    // Indexes of the caller's model, column 0, from top to bottom.
    QModelIndex current() const;
    QModelIndexList selected() const;
    void select(const QModelIndex &index); // also scrolls there

    void exportRows();
    CsvExporter *exporter() const { return m_exporter; }

signals:
    void
    activated(const QModelIndex &index); // by double click or Enter; index of the caller's model, column 0
    void currentChanged(const QModelIndex &index);
    void selectionChanged();
    // Emitted before the context menu is shown; the right-clicked row is current by then.
    void menuAboutToShow(FLPopupMenu *menu);
    void searched(const QString &text);
    // A notice for the page's notice bar.
    void told(NoticeBar::Kind kind, const QString &notice);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void actionEvent(QActionEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void buildLayout(const QString &objectName, const QString &name);
    void buildActions();
    void attach();
    void copy();
    void filter(const QString &text);
    void showMenu(const QPoint &globalPosition);
    void showColumnMenu(const QPoint &position);
    void showEmpty();
    void selectOnFocus(Qt::FocusReason reason);
    QModelIndex toSource(const QModelIndex &index) const;
    QModelIndex fromSource(const QModelIndex &index) const;

    QAbstractItemView *m_view;
    QAbstractItemModel *m_model = nullptr;
    QSortFilterProxyModel *m_filter = nullptr;
    Search m_searchKind = Search::None;
    SearchLine *m_search = nullptr;
    QHBoxLayout *m_tools;
    QStackedLayout *m_stack = nullptr;
    EmptyState *m_empty;
    QIcon m_emptyIcon;
    QString m_emptyTitle;
    QString m_emptyText;
    CsvExporter *m_exporter;
    viewrows::Columns m_exported = viewrows::Columns::Shown;
    bool m_keepsColumns = false;
    QAction *m_copy = nullptr;
    QAction *m_export = nullptr;
    QList<QMetaObject::Connection> m_modelConnections;
};

// For flat lists of any length.
class ResultTable : public ResultView
{
    Q_OBJECT

public:
    ResultTable(const QString &objectName, const QString &name, QWidget *parent = nullptr);

    FLTableView *table() const;
};

// For facts: the columns "Field" and "Value", all sections expanded. Rows keep the model's order.
class FieldValueTree : public ResultView
{
    Q_OBJECT

public:
    static constexpr int fieldWidth = 300;

    FieldValueTree(const QString &objectName, const QString &name, QWidget *parent = nullptr);

    FLTreeView *tree() const;
    // Attaches the model, sets the first column to fieldWidth and expands all rows. The model provides both
    // column titles.
    void showFacts(QAbstractItemModel *model);
};
