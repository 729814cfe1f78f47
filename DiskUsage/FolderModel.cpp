// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/FolderModel.h"

#include "core/SizeText.h"
#include "widgets/Controls.h"
#include "widgets/RowDelegate.h"

#include <QFileInfo>
#include <QPixmap>

#include <algorithm>
#include <utility>

namespace
{

constexpr double wholePercentage = 100.0;

QString displayText(const FolderItem &item, int column)
{
    return column == FolderModel::Percentage ? BarDelegate::percentText(item.share())
                                             : item.value(column).toString();
}

void rankNames(QList<QStandardItem *> siblings)
{
    const auto name = [](const QStandardItem *item) -> const QString & {
        return static_cast<const FolderItem *>(item)->folder().name;
    };
    std::sort(siblings.begin(), siblings.end(), [&name](const QStandardItem *a, const QStandardItem *b) {
        return name(a).compare(name(b), Qt::CaseInsensitive) < 0;
    });
    for (qsizetype rank = 0; rank < siblings.size(); ++rank)
        static_cast<FolderItem *>(siblings.at(rank))->setNameRank(static_cast<int>(rank));
}

// Updates a folder's largest-children text after one of its subfolders was rescanned. Files that were not
// among the original ten are unknown; folders are taken from the rows.
QString correctedMaxData(const FolderItem &parent)
{
    using diskusage::LargestChildren;
    LargestChildren corrected;
    for (const LargestChildren::Child &child : LargestChildren::parse(parent.folder().maxData))
        if (child.kind == LargestChildren::File)
            corrected.offer(child.name, child.size, child.kind);
    for (int row = 0; row < parent.rowCount(); ++row) {
        const diskusage::Folder &folder = parent.childFolder(row)->folder();
        corrected.offer(folder.name, static_cast<qint64>(folder.bytes), LargestChildren::SubFolder);
    }
    return corrected.serialised();
}

} // namespace

FolderItem::FolderItem(diskusage::ScanResult &source, int index, int position)
    : m_source(&source),
      m_index(index),
      m_position(position)
{
}

void FolderItem::takePlaceOf(const FolderItem &old)
{
    m_position = old.m_position;
    m_nameRank = old.m_nameRank;
    folder().name = old.folder().name; // keeps the parent's spelling
}

double FolderItem::share() const
{
    const FolderItem *above = parentFolder();
    if (!above)
        return wholePercentage;
    const quint64 whole = above->folder().bytes;
    return whole == 0 ? 0
                      : wholePercentage * static_cast<double>(folder().bytes) / static_cast<double>(whole);
}

QVariant FolderItem::value(int column) const
{
    const diskusage::Folder &own = folder();
    switch (column) {
    case FolderModel::Name:
        return own.name;
    case FolderModel::SizeText:
        return own.index < 0 ? QString::fromLatin1(diskusage::pendingSizeText) : core::sizeText(own.bytes);
    case FolderModel::FileCount:
        return own.files;
    case FolderModel::FolderCount:
        return own.folders;
    case FolderModel::Size:
        return own.bytes;
    case FolderModel::Path:
        return path();
    case FolderModel::Percentage:
        return share();
    case FolderModel::MaxData:
        return own.maxData;
    case FolderModel::Index:
        return own.index;
    default:
        return {};
    }
}

QVariant FolderItem::data(int role) const
{
    return role == Qt::DisplayRole || role == Qt::EditRole ? value(FolderModel::Name)
                                                           : QStandardItem::data(role);
}

FolderModel::FolderModel(QObject *parent) : QStandardItemModel(parent) {}

FolderModel::~FolderModel()
{
    destroyTree(takeTree());
}

void FolderModel::beginScan(const QString &root)
{
    auto pending = std::make_shared<diskusage::ScanResult>();
    diskusage::Folder folder;
    folder.name = QFileInfo(root).fileName();
    if (folder.name.isEmpty())
        folder.name = root;
    pending->folders.push_back(folder);
    setResult(std::move(pending));
}

void FolderModel::setResult(std::shared_ptr<diskusage::ScanResult> result)
{
    destroyTree(takeTree());
    m_results.clear();
    if (result->folders.empty())
        return;
    m_results.push_back(std::move(result));
    adoptTree(buildTree(*m_results.front()));
}

std::unique_ptr<FolderItem> FolderModel::buildTree(diskusage::ScanResult &result)
{
    // Parents precede their children and siblings are in list order, so a single pass builds all rows.
    // `owned` holds items without a parent, so that nothing leaks if memory runs out.
    std::vector<std::unique_ptr<FolderItem>> owned;
    owned.reserve(result.folders.size());
    std::vector<FolderItem *> items;
    items.reserve(result.folders.size());
    std::vector<QList<QStandardItem *>> children(result.folders.size());
    for (const diskusage::Folder &folder : result.folders) {
        QList<QStandardItem *> none;
        QList<QStandardItem *> &siblings =
            folder.parent < 0 ? none : children[static_cast<std::size_t>(folder.parent)];
        owned.push_back(std::make_unique<FolderItem>(result, static_cast<int>(items.size()),
                                                     static_cast<int>(siblings.size())));
        items.push_back(owned.back().get());
        siblings.append(items.back());
    }
    // From the root down: appendRows() visits all rows below a new row, so it must have none yet.
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (children[i].isEmpty())
            continue;
        items[i]->appendRows(children[i]);
        for (QStandardItem *child : std::as_const(children[i]))
            (void)owned[static_cast<FolderItem *>(child)->number()].release();
        rankNames(children[i]);
    }
    return owned.empty() ? nullptr : std::move(owned.front());
}

void FolderModel::destroyTree(std::unique_ptr<FolderItem> tree)
{
    if (!tree)
        return;
    // Children before their parents, so that each destructor has no children left.
    std::vector<QStandardItem *> order{tree.get()};
    for (std::size_t i = 0; i < order.size(); ++i)
        for (int row = 0; row < order[i]->rowCount(); ++row)
            if (order[i]->child(row)->hasChildren())
                order.push_back(order[i]->child(row));
    for (auto item = order.rbegin(); item != order.rend(); ++item)
        (*item)->removeRows(0, (*item)->rowCount());
}

void FolderModel::adoptTree(std::unique_ptr<FolderItem> tree)
{
    if (tree)
        invisibleRootItem()->appendRow(tree.release());
}

std::unique_ptr<FolderItem> FolderModel::takeTree()
{
    if (invisibleRootItem()->rowCount() == 0)
        return nullptr;
    const QList<QStandardItem *> row = takeRow(0);
    return std::unique_ptr<FolderItem>(static_cast<FolderItem *>(row.value(0)));
}

std::unique_ptr<FolderItem> FolderModel::replaceFolder(const QModelIndex &index,
                                                       std::shared_ptr<diskusage::ScanResult> result,
                                                       std::unique_ptr<FolderItem> subtree)
{
    FolderItem *old = folderItem(index);
    FolderItem *above = old ? old->parentFolder() : nullptr;
    if (!above || !subtree)
        return nullptr;
    const diskusage::Folder before = old->folder();
    const diskusage::Folder &now = subtree->folder();
    subtree->takePlaceOf(*old);

    emit folderAboutToBeReplaced(old);
    // Results of earlier rescans of this folder, or of one below it, are removed with it.
    const QString path = old->path();
    const auto kept =
        std::stable_partition(m_results.begin() + 1, m_results.end(), [&path](const auto &each) {
            const QString root = each->path(0);
            return root != path && !root.startsWith(path + QLatin1Char('\\'));
        });
    m_unused.assign(std::make_move_iterator(kept), std::make_move_iterator(m_results.end()));
    m_results.erase(kept, m_results.end());
    m_results.push_back(std::move(result));
    std::unique_ptr<FolderItem> replaced(static_cast<FolderItem *>(above->takeRow(index.row()).value(0)));
    FolderItem *added = subtree.release();
    above->insertRow(added->position(), added);
    correctTotals(*above, before, now);
    emit folderReplaced(added);
    return replaced;
}

std::vector<diskusage::FileTypeResult> FolderModel::takeFiles()
{
    diskusage::ScanResult &main = *m_results.front();
    std::vector<diskusage::FileTypeResult> files = std::exchange(main.fileTypes, {});
    files.push_back(std::exchange(main.others, {}));
    return files;
}

void FolderModel::correctTotals(FolderItem &above, const diskusage::Folder &before,
                                const diskusage::Folder &now)
{
    for (FolderItem *item = &above; item; item = item->parentFolder()) {
        diskusage::Folder &folder = item->folder();
        folder.bytes = folder.bytes - before.bytes + now.bytes;
        folder.files = folder.files - before.files + now.files;
        folder.folders = folder.folders - before.folders + now.folders;
    }
    for (FolderItem *item = &above; item; item = item->parentFolder()) {
        item->folder().maxData = correctedMaxData(*item);
        emit dataChanged(indexOf(*item, 0), indexOf(*item, ColumnTotal - 1));
    }
    // The siblings' shares changed with the size of their parent.
    emit dataChanged(indexOf(*above.childFolder(0), 0),
                     indexOf(*above.childFolder(above.rowCount() - 1), ColumnTotal - 1));
}

FolderItem *FolderModel::folderItem(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    // Indexes of the base class contain the parent's item; index() below does the same.
    return static_cast<FolderItem *>(
        static_cast<QStandardItem *>(index.internalPointer())->child(index.row()));
}

FolderItem *FolderModel::rootFolder() const
{
    return static_cast<FolderItem *>(item(0));
}

QModelIndex FolderModel::indexOf(const FolderItem &folder, int column) const
{
    QStandardItem *above = folder.parentFolder();
    return createIndex(folder.position(), column, above ? above : invisibleRootItem());
}

QModelIndex FolderModel::find(const QModelIndex &start, const QStringList &names) const
{
    FolderItem *item = folderItem(start);
    for (const QString &name : names) {
        FolderItem *next = nullptr;
        for (int row = 0; item && row < item->rowCount() && !next; ++row)
            if (item->childFolder(row)->folder().name == name)
                next = item->childFolder(row);
        item = next;
    }
    return item ? indexOf(*item, 0) : QModelIndex();
}

int FolderModel::columnCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(ColumnTotal);
}

QModelIndex FolderModel::index(int row, int column, const QModelIndex &parent) const
{
    if (column < 0 || column >= ColumnTotal)
        return {};
    const QModelIndex first = QStandardItemModel::index(row, 0, parent);
    return first.isValid() ? createIndex(row, column, first.internalPointer()) : QModelIndex();
}

QVariant FolderModel::data(const QModelIndex &index, int role) const
{
    const FolderItem *item = folderItem(index);
    if (!item)
        return {};
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return displayText(*item, column);
    case Qt::EditRole:
        return item->value(column);
    case Qt::DecorationRole:
        return column == Name ? QVariant(icon(item->folder())) : QVariant();
    case Qt::TextAlignmentRole:
        return column == Name || column == Path || column == MaxData
                   ? QVariant(Qt::AlignLeading | Qt::AlignVCenter)
                   : QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        if (column != Name)
            return {};
        return item->folder().link && !item->folder().cycle
                   ? tr("%1\nA link. What it leads to is counted here, and again where it lies.")
                         .arg(item->path())
                   : item->path();
    default:
        return {};
    }
}

QVariant FolderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnTotal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return section == Name ? QVariant(Qt::AlignLeading | Qt::AlignVCenter)
                               : QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Name:
        return tr("Name");
    case SizeText:
    case Size:
        return tr("Size");
    case FileCount:
        return tr("File Count");
    case FolderCount:
        return tr("Folder Count");
    case Path:
        return tr("Path");
    case Percentage:
        return tr("Percentage");
    case MaxData:
        return tr("MaxData");
    default:
        return tr("Index");
    }
}

Qt::ItemFlags FolderModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

bool FolderModel::removeColumns(int column, int count, const QModelIndex &parent)
{
    if (parent.isValid() || column != 0 || count != ColumnTotal)
        return false;
    destroyTree(takeTree());
    m_results.clear();
    return true;
}

const QIcon &FolderModel::icon(const diskusage::Folder &folder) const
{
    if (m_folderIcon.isNull()) {
        m_folderIcon =
            m_folderImage.isNull() ? controls::image("Folder16") : QIcon(QPixmap::fromImage(m_folderImage));
        m_cloudIcon = controls::image("FolderCloud16");
        m_linkIcon = controls::image("Link16");
    }
    if (folder.link)
        return m_linkIcon;
    return folder.inOneDrive ? m_cloudIcon : m_folderIcon;
}
