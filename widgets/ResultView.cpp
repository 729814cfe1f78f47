// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/ResultView.h"

#include "widgets/ColumnState.h"
#include "widgets/Controls.h"
#include "widgets/EmptyState.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTableView.h"
#include "widgets/FLTreeView.h"
#include "widgets/SearchLine.h"
#include "widgets/Theme.h"
#include "widgets/ViewRows.h"

#include <QAction>
#include <QActionEvent>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace results
{

namespace
{

QHeaderView *headerOf(QAbstractItemView *view)
{
    if (auto *table = qobject_cast<QTableView *>(view))
        return table->horizontalHeader();
    auto *tree = qobject_cast<QTreeView *>(view);
    return tree ? tree->header() : nullptr;
}

// Leaves sorting to the source model: a click on a header sorts that.
class WordFilter : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setWords(const QString &text)
    {
        m_words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        invalidateFilter();
    }

    void sort(int column, Qt::SortOrder order) override
    {
        if (sourceModel())
            sourceModel()->sort(column, order);
    }

protected:
    // Every word must occur in one of the row's texts.
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        QString texts;
        const int columns = m_words.isEmpty() ? 0 : sourceModel()->columnCount(parent);
        for (int column = 0; column < columns; ++column)
            texts += sourceModel()->index(row, column, parent).data().toString() + QLatin1Char('\n');
        return std::ranges::all_of(
            m_words, [&texts](const QString &word) { return texts.contains(word, Qt::CaseInsensitive); });
    }

private:
    QStringList m_words;
};

// Puts `widget` directly before `next` in the tab order.
void tabBefore(QWidget *widget, QWidget *next)
{
    for (QWidget *before = next->previousInFocusChain(); before != next;
         before = before->previousInFocusChain()) {
        if (before == widget || before->focusPolicy() == Qt::NoFocus)
            continue;
        QWidget::setTabOrder(before, widget);
        return;
    }
}

} // namespace

} // namespace results

ResultView::ResultView(QAbstractItemView *view, const QString &objectName, const QString &name,
                       QWidget *parent)
    : QWidget(parent),
      m_view(view),
      m_tools(new QHBoxLayout),
      m_empty(new EmptyState),
      m_exporter(new CsvExporter(this))
{
    buildLayout(objectName, name);
    buildActions();
    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
    connect(m_view, &QAbstractItemView::activated, this,
            [this](const QModelIndex &index) { emit activated(toSource(index).siblingAtColumn(0)); });
    connect(m_exporter, &CsvExporter::started, this,
            [this](const QString &what) { emit told(NoticeBar::Kind::Info, what); });
    connect(m_exporter, &CsvExporter::ended, this, &ResultView::told);
}

ResultView::~ResultView()
{
    m_exporter->abandon(); // it reads the view's model
}

void ResultView::buildLayout(const QString &objectName, const QString &name)
{
    m_view->setObjectName(objectName);
    m_view->setAccessibleName(name);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setContextMenuPolicy(Qt::DefaultContextMenu);
    auto *body = new QWidget(this);
    m_stack = new QStackedLayout(body);
    m_stack->addWidget(m_view);
    m_stack->addWidget(m_empty);
    m_tools->setSpacing(theme::spaceSnug);
    m_tools->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addLayout(m_tools);
    layout->addWidget(body, 1);
    if (QHeaderView *header = results::headerOf(m_view)) {
        header->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(header, &QWidget::customContextMenuRequested, this, &ResultView::showColumnMenu);
    }
}

void ResultView::buildActions()
{
    m_copy = controls::action(m_view, {"copyAction", "Copy24", tr("Copy"), {}, QKeySequence::Copy},
                              [this] { copy(); });
    m_export =
        controls::action(m_view, {"exportAction", "Export24", tr("Export as CSV..."), {}, QKeySequence::Save},
                         [this] { exportRows(); });
}

void ResultView::setModel(QAbstractItemModel *model)
{
    m_exporter->abandon();
    m_model = model;
    attach();
}

void ResultView::attach()
{
    for (const QMetaObject::Connection &connection : std::exchange(m_modelConnections, {}))
        disconnect(connection);
    QItemSelectionModel *former = m_view->selectionModel();
    delete std::exchange(m_filter, nullptr);
    QAbstractItemModel *shown = m_model;
    if (m_model && m_searchKind == Search::Filter) {
        m_filter = new results::WordFilter(this);
        m_filter->setRecursiveFilteringEnabled(true);
        m_filter->setAutoAcceptChildRows(true);
        m_filter->setSourceModel(m_model);
        shown = m_filter;
    }
    m_view->setModel(shown);
    if (former != m_view->selectionModel())
        delete former;
    if (shown) {
        connect(
            m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &index) { emit currentChanged(toSource(index).siblingAtColumn(0)); });
        connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                &ResultView::selectionChanged);
        m_modelConnections = {connect(shown, &QAbstractItemModel::modelReset, this, &ResultView::showEmpty),
                              connect(shown, &QAbstractItemModel::rowsInserted, this, &ResultView::showEmpty),
                              connect(shown, &QAbstractItemModel::rowsRemoved, this, &ResultView::showEmpty)};
    }
    if (m_search)
        m_search->clear();
    showEmpty();
}

void ResultView::setSearch(Search search)
{
    m_searchKind = search;
    delete std::exchange(m_search, nullptr);
    if (search != Search::None) {
        m_search = new SearchLine(this);
        addToolWidget(m_search);
        results::tabBefore(m_search, m_view);
        connect(m_search, &SearchLine::searched, this, &ResultView::filter);
        controls::shortcut(this, QKeySequence::Find, [this] {
            m_search->setFocus(Qt::ShortcutFocusReason);
            m_search->selectAll();
        });
    }
    attach();
}

void ResultView::addToolWidget(QWidget *widget)
{
    m_tools->addWidget(widget);
}

void ResultView::filter(const QString &text)
{
    if (m_filter && m_model->rowCount() <= maxFiltered)
        static_cast<results::WordFilter *>(m_filter)->setWords(text);
    else if (m_filter)
        emit told(NoticeBar::Kind::Info,
                  tr("Lists of more than %1 rows cannot be searched.").arg(QString::number(maxFiltered)));
    if (auto *tree = qobject_cast<QTreeView *>(m_view); tree && m_filter)
        tree->expandAll();
    showEmpty();
    emit searched(text);
}

void ResultView::dropExportKey()
{
    m_export->setShortcut({});
}

void ResultView::keepColumns(const settings::Text &setting)
{
    QHeaderView *header = results::headerOf(m_view);
    if (std::exchange(m_keepsColumns, true))
        columns::restore(*header, setting.read());
    else
        columns::keep(header, setting);
}

void ResultView::setEmpty(const QIcon &icon, const QString &title, const QString &text)
{
    m_emptyIcon = icon;
    m_emptyTitle = title;
    m_emptyText = text;
    showEmpty();
}

void ResultView::showEmpty()
{
    const bool nothing = !m_view->model() || m_view->model()->rowCount(m_view->rootIndex()) == 0;
    const bool searching = m_search && !m_search->text().isEmpty();
    if (nothing && searching)
        m_empty->setContent(controls::image("Search16"), tr("Nothing found"),
                            tr("No row holds \"%1\".").arg(m_search->text()));
    else if (nothing)
        m_empty->setContent(m_emptyIcon, m_emptyTitle, m_emptyText);
    m_stack->setCurrentIndex(nothing ? 1 : 0);
    if (!nothing && hasFocus()) // the focus was set while there was no view to pass it on to
        m_view->setFocus();
}

QModelIndex ResultView::toSource(const QModelIndex &index) const
{
    return m_filter ? m_filter->mapToSource(index) : index;
}

QModelIndex ResultView::fromSource(const QModelIndex &index) const
{
    return m_filter ? m_filter->mapFromSource(index) : index;
}

QModelIndex ResultView::current() const
{
    return toSource(m_view->currentIndex()).siblingAtColumn(0);
}

QModelIndexList ResultView::selected() const
{
    QModelIndexList rows;
    for (const QModelIndex &row : viewrows::selectedRows(*m_view))
        rows.append(toSource(row));
    return rows;
}

void ResultView::select(const QModelIndex &index)
{
    m_view->setCurrentIndex(fromSource(index));
    m_view->scrollTo(fromSource(index));
}

void ResultView::copy()
{
    const QString text = viewrows::selectedText(*m_view);
    if (text.isNull())
        emit told(NoticeBar::Kind::Warning,
                  tr("At most %1 rows are copied at once. Export the table to have all of it.")
                      .arg(QString::number(viewrows::maxCopied)));
    else if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void ResultView::exportRows()
{
    m_exporter->start(m_view->accessibleName(),
                      [this] { return viewrows::table(*m_view, m_view->accessibleName(), m_exported); });
}

// A list indicates its focus through a selected row.
void ResultView::selectOnFocus(Qt::FocusReason reason)
{
    if ((reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason) || !m_view->selectionModel() ||
        m_view->selectionModel()->hasSelection())
        return;
    const QModelIndex current = m_view->currentIndex();
    m_view->setCurrentIndex(current.isValid() ? current : m_view->model()->index(0, 0, m_view->rootIndex()));
}

bool ResultView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view && event->type() == QEvent::FocusIn)
        selectOnFocus(static_cast<QFocusEvent *>(event)->reason());
    if (event->type() != QEvent::ContextMenu || (watched != m_view && watched != m_view->viewport()))
        return QWidget::eventFilter(watched, event);
    const auto *menu = static_cast<QContextMenuEvent *>(event);
    if (menu->reason() == QContextMenuEvent::Keyboard) {
        const QRect row = m_view->visualRect(m_view->currentIndex());
        showMenu(m_view->viewport()->mapToGlobal(row.isValid() ? row.center() : QPoint()));
    } else {
        showMenu(menu->globalPos());
    }
    return true;
}

// No focus proxy: the Tab key would stop before a hidden one, and skip the widgets in between.
void ResultView::focusInEvent(QFocusEvent *event)
{
    if (m_view->isVisible())
        m_view->setFocus(event->reason());
    QWidget::focusInEvent(event);
}

// Actions of this widget are added to the view, so that their shortcuts work while it has the focus.
void ResultView::actionEvent(QActionEvent *event)
{
    if (event->type() == QEvent::ActionAdded && event->action()->shortcutContext() == Qt::WindowShortcut)
        event->action()->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    QWidget::actionEvent(event);
}

void ResultView::showMenu(const QPoint &globalPosition)
{
    auto *menu = new FLPopupMenu(this);
    menu->setObjectName(QStringLiteral("resultMenu"));
    for (QAction *action : actions())
        if (!action->text().isEmpty())
            menu->addWithShortcut(action);
    if (!menu->isEmpty())
        menu->addSeparator();
    m_copy->setEnabled(m_view->selectionModel() && m_view->selectionModel()->hasSelection());
    menu->addWithShortcut(m_copy);
    menu->addWithShortcut(m_export);
    emit menuAboutToShow(menu);
    menu->popup(globalPosition);
}

void ResultView::showColumnMenu(const QPoint &position)
{
    QHeaderView *header = results::headerOf(m_view);
    auto *menu = new FLPopupMenu(this);
    menu->setObjectName(QStringLiteral("columnMenu"));
    const qsizetype shown = viewrows::shownColumns(*m_view).size();
    for (int column = 0; column < header->count(); ++column) {
        const QString title = m_view->model()->headerData(column, Qt::Horizontal).toString();
        if (title.isEmpty())
            continue;
        QAction *toggle = menu->addAction(title);
        toggle->setCheckable(true);
        toggle->setChecked(!header->isSectionHidden(column));
        toggle->setEnabled(!toggle->isChecked() || shown > 1);
        connect(toggle, &QAction::toggled, header,
                [header, column](bool show) { header->setSectionHidden(column, !show); });
    }
    menu->popup(header->mapToGlobal(position));
}

ResultTable::ResultTable(const QString &objectName, const QString &name, QWidget *parent)
    : ResultView(new FLTableView, objectName, name, parent)
{
}

FLTableView *ResultTable::table() const
{
    return static_cast<FLTableView *>(view());
}

FieldValueTree::FieldValueTree(const QString &objectName, const QString &name, QWidget *parent)
    : ResultView(new FLTreeView, objectName, name, parent)
{
}

FLTreeView *FieldValueTree::tree() const
{
    return static_cast<FLTreeView *>(view());
}

void FieldValueTree::showFacts(QAbstractItemModel *model)
{
    setModel(model);
    tree()->setColumnWidth(0, fieldWidth);
    tree()->expandAll();
}
