// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FoldersPage.h"

#include "DiskUsage/FolderModel.h"
#include "DiskUsage/FolderSortModel.h"
#include "DiskUsage/PathActions.h"
#include "DiskUsage/UsageGraph.h"
#include "core/SizeText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTreeView.h"
#include "widgets/PathBar.h"
#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

namespace
{

constexpr int graphLevels = 4;
constexpr int smallestPart = 400; // of the folder, to be shown with what is in it
constexpr int drawDelay = 30;     // ms
constexpr int smallestBar = 32;
constexpr int levelIndent = 12; // the tree shares the window with the graph, and folders are deeply nested

int levelOf(QModelIndex folder)
{
    int level = 0;
    while ((folder = folder.parent()).isValid())
        ++level;
    return level;
}

} // namespace

FoldersPage::FoldersPage(QWidget *parent)
    : QWidget(parent),
      m_sorted(new FolderSortModel(this)),
      m_pathBar(new PathBar(this)),
      m_tree(new FLTreeView(this)),
      m_graph(new UsageGraph(this)),
      m_graphTitle(new ElidedLabel(this, Qt::ElideMiddle)),
      m_actions(new PathActions(m_tree, [this] { return currentPath(); })),
      m_graphActions(new PathActions(m_graph, [this] { return graphPath(); }))
{
    buildTree();
    buildGraph();
    buildLayout();
    connectTree();
    connectGraph();
    connectActions(m_actions);
    connectActions(m_graphActions);
}

FoldersPage::~FoldersPage() = default;

void FoldersPage::buildTree()
{
    m_tree->setObjectName(QStringLiteral("folderTreeView"));
    m_tree->setAccessibleName(tr("Folders"));
    m_tree->setModel(m_sorted);
    m_tree->setItemDelegateForColumn(FolderModel::Percentage, new BarDelegate(m_tree));
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->setIndentation(levelIndent);
    m_tree->setExpandsOnDoubleClick(false); // a double click activates, like Enter
    m_actions->addScanAgain();
    setFocusProxy(m_tree);
}

void FoldersPage::buildGraph()
{
    m_graph->setObjectName(QStringLiteral("usageGraph"));
    m_graphTitle->setFont(theme::sectionTitle(font()));
    m_pathBar->setObjectName(QStringLiteral("pathBar"));
}

void FoldersPage::buildLayout()
{
    auto *right = new QWidget(this);
    auto *column = new QVBoxLayout(right);
    column->setContentsMargins(theme::space, 0, 0, 0);
    column->setSpacing(theme::spaceTight);
    column->addWidget(m_graphTitle);
    column->addWidget(m_graph, 1);

    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(m_tree);
    splitter->addWidget(right);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({640, 360}); // a proportion: the splitter scales it to its width

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::spaceSnug, 0, 0);
    layout->setSpacing(theme::spaceSnug);
    layout->addWidget(m_pathBar);
    layout->addWidget(splitter, 1);
}

void FoldersPage::connectTree()
{
    connect(m_tree, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &where) { m_actions->showMenu(m_tree->viewport()->mapToGlobal(where)); });
    connect(m_tree, &QAbstractItemView::activated, this, [this](const QModelIndex &index) {
        const QModelIndex row = index.siblingAtColumn(FolderModel::Name);
        m_tree->setExpanded(row, !m_tree->isExpanded(row));
    });
    connect(m_tree, &QTreeView::expanded, this,
            [this](const QModelIndex &folder) { makeRoomForLevel(levelOf(folder) + 1); });
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &row) {
                scrollToName(row);
                m_later.start();
            });
    connect(m_actions, &PathActions::scanAgain, this, [this] { emit scanAgain(currentFolder()); });
    connect(m_pathBar, &PathBar::partActivated, this, [this](int part) {
        QModelIndex folder = currentFolder();
        for (auto level = m_pathBar->path().size() - 1; level > part; --level)
            folder = folder.parent();
        selectFolder(folder);
    });
    m_later.setSingleShot(true);
    m_later.setInterval(drawDelay);
    connect(&m_later, &QTimer::timeout, this, &FoldersPage::showCurrent);

    auto *up = new QAction(tr("Folder Above"), this);
    up->setObjectName(QStringLiteral("folderAboveAction"));
    up->setShortcuts({QKeySequence(Qt::Key_Backspace), QKeySequence(Qt::ALT | Qt::Key_Up)});
    up->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(up);
    connect(up, &QAction::triggered, this, &FoldersPage::goUp);
}

void FoldersPage::connectGraph()
{
    connect(m_graph, &UsageGraph::folderActivated, this, &FoldersPage::enter);
    connect(m_graph, &UsageGraph::fileActivated, m_graphActions, &PathActions::showInExplorer);
    connect(m_graph, &UsageGraph::menuRequested, m_graphActions, &PathActions::showMenu);
}

void FoldersPage::connectActions(PathActions *actions)
{
    connect(actions, &PathActions::exportTable, this, &FoldersPage::exportTable);
    connect(actions, &PathActions::failed, this, &FoldersPage::failed);
}

void FoldersPage::setModel(FolderModel *model, const core::FileTypeTable &fileTypes)
{
    m_later.stop();
    m_model = model;
    m_sorted->setFolderModel(model);
    m_matcher.reset();
    m_categories.clear();
    if (!model) {
        m_pathBar->setPath({});
        m_graph->setUsage({}, {});
        return;
    }
    m_matcher = std::make_unique<core::FileTypeMatcher>(fileTypes);
    for (const core::FileTypeCategory &category : fileTypes)
        m_categories.append(category.name);
    m_tree->showColumns({FolderModel::Name, FolderModel::Percentage, FolderModel::SizeText,
                         FolderModel::FileCount, FolderModel::FolderCount});
    m_tree->setSortingEnabled(true);
    showColumnWidths();
    m_tree->sortByColumn(FolderModel::SizeText, Qt::DescendingOrder);
    const QModelIndex root = m_sorted->index(0, 0);
    m_tree->expand(root);
    m_tree->setCurrentIndex(root);
    m_later.start(); // the tree is updated first, the graph afterwards
}

void FoldersPage::showColumnWidths()
{
    QHeaderView *header = m_tree->header();
    const QFontMetrics metrics(m_tree->font());
    const auto resize = [header, &metrics](int column, const QString &widest, int more) {
        const int text = metrics.horizontalAdvance(widest) + 2 * theme::spaceSnug;
        header->resizeSection(column, qMax(text + more, header->sectionSizeHint(column)));
    };
    resize(FolderModel::Percentage, QStringLiteral("100.0 %"), smallestBar);
    resize(FolderModel::SizeText, QStringLiteral("1000.00 GB"), 0);
    resize(FolderModel::FileCount, QStringLiteral("1000000"), 0);
    resize(FolderModel::FolderCount, QStringLiteral("100000"), 0);
    m_deepestLevel = 1;
    m_tree->setStretchColumn(FolderModel::Name, nameWidth(m_deepestLevel));
}

// The width of a row at that depth: indentation, icon, and a name.
int FoldersPage::nameWidth(int level) const
{
    const QFontMetrics metrics(m_tree->font());
    return (level + 1) * m_tree->indentation() + m_tree->style()->pixelMetric(QStyle::PM_SmallIconSize) +
           metrics.horizontalAdvance(QStringLiteral("a folder's name")) + 2 * theme::space;
}

// Deeper rows widen the name column, and the view scrolls, so that names stay readable. The column never
// shrinks again: otherwise all columns would move when a folder is collapsed.
void FoldersPage::makeRoomForLevel(int level)
{
    if (level <= m_deepestLevel)
        return;
    m_deepestLevel = level;
    m_tree->setStretchMinimum(nameWidth(level));
}

// scrollTo() shows the start of a cell, which at deep levels is only indentation.
void FoldersPage::scrollToName(const QModelIndex &row)
{
    const QRect cell = m_tree->visualRect(row.siblingAtColumn(FolderModel::Name));
    const int hidden = cell.left() + nameWidth(0) - m_tree->viewport()->width();
    if (hidden > 0)
        m_tree->horizontalScrollBar()->setValue(m_tree->horizontalScrollBar()->value() + hidden);
}

QModelIndex FoldersPage::currentFolder() const
{
    if (!m_model)
        return {};
    const QModelIndex current = m_sorted->mapToSource(m_tree->currentIndex());
    return current.isValid() ? current.siblingAtColumn(0) : m_model->index(0, 0);
}

QString FoldersPage::currentPath() const
{
    const FolderItem *item = m_model ? m_model->folderItem(currentFolder()) : nullptr;
    return item ? item->path() : QString();
}

void FoldersPage::selectFolder(const QModelIndex &folder)
{
    const QModelIndex row = m_sorted->mapFromSource(folder);
    if (!row.isValid())
        return;
    m_tree->setCurrentIndex(row);
    m_tree->expand(row);
    m_tree->scrollTo(row);
    scrollToName(row);
}

void FoldersPage::showCurrent()
{
    const FolderItem *item = m_model ? m_model->folderItem(currentFolder()) : nullptr;
    if (!item)
        return;
    QStringList names;
    for (const FolderItem *part = item; part; part = part->parentFolder())
        names.prepend(part->folder().name);
    m_pathBar->setPath(names);
    const diskusage::Folder &folder = item->folder();
    m_graphTitle->setText(tr("%1, %2").arg(folder.name, core::sizeText(folder.bytes)));
    m_graph->setEmptyText(!folder.readable ? tr("This folder could not be read.")
                          : folder.cycle   ? tr("This is a link to a folder above it, and was not entered.")
                                           : tr("Nothing in this folder takes any space."));
    m_graph->setUsage(diskusage::usageTree(*item, *m_matcher, graphLevels, folder.bytes / smallestPart),
                      m_categories);
    m_graph->setAccessibleName(tr("Usage graph of %1").arg(folder.name));
}

void FoldersPage::refresh()
{
    showCurrent();
}

void FoldersPage::enter(const QStringList &names)
{
    const QModelIndex folder = m_model ? m_model->find(currentFolder(), names) : QModelIndex();
    if (folder.isValid())
        selectFolder(folder);
}

void FoldersPage::goUp()
{
    const QModelIndex above = currentFolder().parent();
    if (above.isValid())
        selectFolder(above);
}

QString FoldersPage::graphPath() const
{
    const QStringList names = m_graph->currentNames();
    const QString folder = currentPath();
    if (names.isEmpty() || folder.isEmpty())
        return {};
    const QString separator = folder.endsWith(QLatin1Char('\\')) ? QString() : QStringLiteral("\\");
    return folder + separator + names.join(QLatin1Char('\\'));
}

csv::Table FoldersPage::csvTable() const
{
    csv::Table table;
    table.suggestedName = tr("Folders");
    table.titles = {tr("Path"),       tr("Name"),       tr("Size"),        tr("Raw Size"),
                    tr("Percentage"), tr("File Count"), tr("Folder Count")};
    if (!m_model || !m_model->rootFolder())
        return table;
    // All folders of the scan in tree order, expanded or not.
    const int column = m_sorted->sortColumn();
    const Qt::SortOrder order = m_sorted->sortOrder();
    auto waiting = std::make_shared<std::vector<const FolderItem *>>();
    waiting->push_back(m_model->rootFolder());
    table.next = [waiting, column, order](QStringList &row) {
        if (waiting->empty())
            return false;
        const FolderItem *item = waiting->back();
        waiting->pop_back();
        const std::vector<int> rows = FolderSortModel::sortedRows(*item, column, order);
        for (auto position = rows.rbegin(); position != rows.rend(); ++position)
            waiting->push_back(item->childFolder(*position));
        const diskusage::Folder &folder = item->folder();
        row = {item->path(),
               folder.name,
               core::sizeText(folder.bytes),
               QString::number(folder.bytes),
               QString::number(item->share(), 'f', 2),
               QString::number(folder.files),
               QString::number(folder.folders)};
        return true;
    };
    return table;
}
