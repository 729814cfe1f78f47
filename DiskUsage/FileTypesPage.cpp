// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FileTypesPage.h"

#include "DiskUsage/DataFilesModel.h"
#include "DiskUsage/FileTable.h"
#include "DiskUsage/PathActions.h"
#include "core/SizeText.h"
#include "platform/FileTime.h"
#include "widgets/Controls.h"
#include "widgets/EmptyState.h"
#include "widgets/FLPopupMenu.h"
#include "widgets/FLTableView.h"
#include "widgets/FLTreeView.h"
#include "widgets/RowDelegate.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedLayout>
#include <QStandardItemModel>
#include <QVBoxLayout>

using namespace diskusage;

namespace
{

constexpr int categoryRole = Qt::UserRole;
constexpr int smallestBar = 28;

// Sorts names case-insensitively, as all other lists do.
class NameItem : public QStandardItem
{
public:
    using QStandardItem::QStandardItem;
    bool operator<(const QStandardItem &other) const override
    {
        return text().compare(other.text(), Qt::CaseInsensitive) < 0;
    }
};

// Shows the size as text and sorts by number.
class SizeItem : public QStandardItem
{
public:
    explicit SizeItem(quint64 bytes) : m_bytes(bytes) { setText(core::sizeText(bytes)); }
    quint64 bytes() const { return m_bytes; }
    bool operator<(const QStandardItem &other) const override
    {
        return m_bytes < static_cast<const SizeItem &>(other).m_bytes;
    }

private:
    quint64 m_bytes;
};

QStandardItem *numberItem(const QVariant &number)
{
    auto *item = new QStandardItem;
    item->setData(number, Qt::EditRole);
    return item;
}

} // namespace

FileTypesPage::FileTypesPage(QWidget *parent)
    : QWidget(parent),
      m_typeModel(new QStandardItemModel(this)),
      m_types(new FLTreeView(this)),
      m_title(new QLabel(this)),
      m_note(new QLabel(this)),
      m_table(new FLTableView(this)),
      m_empty(new EmptyState(this)),
      m_actions(new PathActions(m_table, [this] { return currentPath(); }))
{
    buildTypes();
    buildFiles();
    buildLayout();
    connectAll();
}

void FileTypesPage::buildTypes()
{
    m_types->setObjectName(QStringLiteral("fileTypesTreeView"));
    m_types->setAccessibleName(tr("File Types"));
    m_types->setRootIsDecorated(false);
    m_types->setItemsExpandable(false);
    m_types->setModel(m_typeModel);
    m_types->setItemDelegateForColumn(TypeShare, new BarDelegate(m_types));
    m_types->setSortingEnabled(true);
    m_types->setTextElideMode(Qt::ElideRight);
}

void FileTypesPage::buildFiles()
{
    m_title->setFont(theme::sectionTitle(font()));
    m_title->setTextFormat(Qt::PlainText);
    m_table->setObjectName(QStringLiteral("dataFilesTableView"));
    m_table->setAccessibleName(tr("Files of the selected type"));
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    m_empty->setContent(controls::image("Info16"), tr("No files of this type"));
}

void FileTypesPage::buildLayout()
{
    auto *right = new QWidget(this);
    auto *column = new QVBoxLayout(right);
    column->setContentsMargins(theme::space, 0, 0, 0);
    column->setSpacing(theme::spaceTight);
    column->addWidget(m_title);
    m_note->setWordWrap(true);
    m_note->setText(
        tr("Files whose extension belongs to no type that is searched for. An extension begins at the first "
           "dot of a name: that of backup.tar.gz is .tar.gz, that of photo.2024.jpg is .2024.jpg."));
    m_note->hide();
    theme::makeMuted(m_note);
    column->addWidget(m_note);
    auto *body = new QWidget(right);
    m_stack = new QStackedLayout(body);
    m_stack->addWidget(m_table);
    m_stack->addWidget(m_empty);
    column->addWidget(body, 1);

    auto *splitter = new QSplitter(Qt::Horizontal, this);
    splitter->addWidget(m_types);
    splitter->addWidget(right);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 3);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({480, 520}); // a proportion: the splitter scales it to its width
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, theme::spaceSnug, 0, 0);
    layout->addWidget(splitter);
}

void FileTypesPage::connectAll()
{
    connect(m_types->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FileTypesPage::showSelectedType);
    connect(m_table, &QAbstractItemView::activated, m_actions, &PathActions::open);
    connect(m_table, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &where) { m_actions->showMenu(m_table->viewport()->mapToGlobal(where)); });
    connect(m_actions, &PathActions::exportTable, this, &FileTypesPage::exportTable);
    connect(m_actions, &PathActions::failed, this, &FileTypesPage::failed);
    addTypesMenu();
}

void FileTypesPage::addTypesMenu()
{
    auto *action = new QAction(controls::image("Export24"), tr("Export as CSV..."), m_types);
    action->setObjectName(QStringLiteral("exportTypesAction"));
    action->setShortcut(QKeySequence::Save);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_types->addAction(action);
    m_types->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(action, &QAction::triggered, this, &FileTypesPage::exportTypes);
    connect(m_types, &QWidget::customContextMenuRequested, this, [this, action](const QPoint &where) {
        auto *menu = new FLPopupMenu(m_types);
        menu->setObjectName(QStringLiteral("typesMenu"));
        menu->addWithShortcut(action);
        menu->popup(m_types->viewport()->mapToGlobal(where));
    });
}

void FileTypesPage::connectModel()
{
    connect(m_model, &DataFilesModel::sortingChanged, this, [this](bool running) {
        m_sorting = running;
        showTitle();
    });
    connect(m_model, &DataFilesModel::sortingFailed, this, [this](const QString &message) {
        QHeaderView *header = m_table->horizontalHeader();
        const QSignalBlocker quiet(header); // restores the sort indicator without sorting
        header->setSortIndicator(m_model->sortColumn(), m_model->sortOrder());
        emit failed(message);
    });
}

void FileTypesPage::setModel(DataFilesModel *model, quint64 total)
{
    if (m_model) {
        disconnect(m_model, nullptr, this, nullptr);
        m_model->showCategory(-1); // cancels a running sort
    }
    m_table->setModel(nullptr);
    m_typeModel->clear();
    m_model = model;
    if (!model) {
        m_title->clear();
        return;
    }
    connectModel();
    m_table->setModel(model);
    showFileColumns(*m_table);
    m_table->horizontalHeader()->setSortIndicator(FileSizeText, Qt::DescendingOrder);
    fillTypes(total);
    m_types->setCurrentIndex(m_typeModel->index(0, 0));
}

void FileTypesPage::refresh(quint64 total)
{
    if (!m_model)
        return;
    const int shown = m_model->shownCategory();
    {
        const QSignalBlocker quiet(m_types->selectionModel());
        m_typeModel->clear();
        fillTypes(total);
    }
    for (int row = 0; row < m_typeModel->rowCount(); ++row)
        if (m_typeModel->index(row, TypeName).data(categoryRole).toInt() == shown)
            m_types->setCurrentIndex(m_typeModel->index(row, TypeName));
    showSelectedType();
}

void FileTypesPage::fillTypes(quint64 total)
{
    m_typeModel->setHorizontalHeaderLabels({tr("File Type"), tr("Percentage"), tr("Size"), tr("File Count")});
    for (const int column : {TypeShare, TypeSize, TypeCount})
        m_typeModel->horizontalHeaderItem(column)->setTextAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    const int others = m_model->categoryTotal() - 1;
    for (int i = 0; i <= others; ++i) {
        const FileTypeResult &type = m_model->category(i);
        if (i < others && !type.category.enabled)
            continue;
        auto *name = new NameItem(QIcon(core::fileTypeIcon(type.category.name)), type.category.name);
        name->setData(i, categoryRole);
        const double share =
            total == 0 ? 0 : 100.0 * static_cast<double>(type.total) / static_cast<double>(total);
        QList<QStandardItem *> row{name, numberItem(share), new SizeItem(type.total),
                                   numberItem(static_cast<qulonglong>(type.files.size()))};
        row.at(TypeShare)->setData(i < others ? i : -1, BarDelegate::ChartIndexRole);
        for (QStandardItem *item : row)
            item->setEditable(false);
        for (const int column : {TypeSize, TypeCount})
            row.at(column)->setTextAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
        m_typeModel->appendRow(row);
    }
    m_types->sortByColumn(TypeSize, Qt::DescendingOrder);
    QHeaderView *header = m_types->header();
    const QFontMetrics metrics(m_types->font());
    const auto widthOf = [&metrics](const QString &text) {
        return metrics.horizontalAdvance(text) + 2 * theme::space;
    };
    header->resizeSection(TypeShare, widthOf(QStringLiteral("100.0 %")) + smallestBar);
    header->resizeSection(TypeSize, widthOf(QStringLiteral("1000.00 GB")));
    header->resizeSection(TypeCount, widthOf(tr("File Count")));
    m_types->setStretchColumn(TypeName, widthOf(QStringLiteral("Disk Image")));
}

void FileTypesPage::showSelectedType()
{
    const QModelIndex type = m_types->currentIndex().siblingAtColumn(TypeName);
    if (!m_model || !type.isValid())
        return;
    m_model->showCategory(type.data(categoryRole).toInt());
    m_table->scrollToTop();
    m_stack->setCurrentIndex(m_model->rowCount() > 0 ? 0 : 1);
    showTitle();
}

void FileTypesPage::showTitle()
{
    if (!m_model || m_model->shownCategory() < 0)
        return;
    const FileTypeResult &type = m_model->category(m_model->shownCategory());
    m_note->setVisible(m_model->shownCategory() == m_model->categoryTotal() - 1);
    m_title->setText(m_sorting ? tr("%1, sorting ...").arg(type.category.name) : type.category.name);
}

QString FileTypesPage::currentPath() const
{
    const int row = m_table->currentIndex().row();
    return m_model && row >= 0 && row < m_model->rowCount() ? m_model->filePath(row) : QString();
}

csv::Table FileTypesPage::csvTable() const
{
    csv::Table table;
    for (int column = 0; column < FileColumnTotal; ++column)
        table.titles.append(fileColumnTitle(column));
    if (!m_model || m_model->shownCategory() < 0)
        return table;
    const int category = m_model->shownCategory();
    table.suggestedName = m_model->category(category).category.name;
    const auto result = m_model->result();
    const std::vector<FileRecord> &files = m_model->category(category).files;
    table.next = [result, &files, order = m_model->order(), next = std::size_t(0)](QStringList &row) mutable {
        if (next == order.size())
            return false;
        const FileRecord &file = files[order[next++]];
        row = {file.name, core::sizeText(file.size), platform::fileTimeText(file.lastAccessTime),
               result->path(file.folder), QString::number(file.size)};
        return true;
    };
    return table;
}

csv::Table FileTypesPage::typesTable() const
{
    csv::Table table;
    table.suggestedName = tr("File Types");
    table.titles = {tr("File Type"), tr("Percentage"), tr("Size"), tr("Raw Size"), tr("File Count")};
    QList<QStringList> rows;
    for (int row = 0; row < m_typeModel->rowCount(); ++row) {
        const auto *size = static_cast<const SizeItem *>(m_typeModel->item(row, TypeSize));
        rows.append({m_typeModel->item(row, TypeName)->text(),
                     QString::number(m_typeModel->index(row, TypeShare).data().toDouble(), 'f', 2),
                     size->text(), QString::number(size->bytes()),
                     m_typeModel->index(row, TypeCount).data().toString()});
    }
    table.setRows(std::move(rows));
    return table;
}
