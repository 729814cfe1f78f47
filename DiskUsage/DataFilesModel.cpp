// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/DataFilesModel.h"

#include "core/SizeText.h"
#include "platform/FileTime.h"

#include <QCoreApplication>

#include <algorithm>
#include <exception>
#include <numeric>

namespace diskusage
{

namespace
{

struct Cancelled {
};

// Throwing is the only way to leave std::sort early.
void throwIfSet(const core::CancelFlag &cancel)
{
    if (cancel.isSet())
        throw Cancelled();
}

// The rank of each folder in the order of paths.
std::vector<int> folderRanks(const ScanResult &result, const core::CancelFlag &cancel)
{
    std::vector<QString> paths;
    paths.reserve(result.folders.size());
    for (std::size_t i = 0; i < result.folders.size(); ++i) {
        throwIfSet(cancel);
        paths.push_back(result.path(static_cast<int>(i)));
    }
    std::vector<int> order(paths.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        throwIfSet(cancel);
        return paths[static_cast<std::size_t>(a)].compare(paths[static_cast<std::size_t>(b)],
                                                          Qt::CaseInsensitive) < 0;
    });
    std::vector<int> ranks(paths.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        ranks[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
    return ranks;
}

template <class Compare>
void sortBy(FileOrder &sorted, Qt::SortOrder order, const core::CancelFlag &cancel, Compare compare)
{
    std::sort(sorted.begin(), sorted.end(), [&](quint32 a, quint32 b) {
        throwIfSet(cancel);
        const int difference = compare(a, b);
        if (difference == 0)
            return a < b;
        return (difference < 0) == (order == Qt::AscendingOrder);
    });
}

template <class Number>
int threeWay(Number a, Number b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

} // namespace

QString fileColumnTitle(int column)
{
    static constexpr const char *titles[FileColumnTotal] = {
        QT_TRANSLATE_NOOP("DiskUsage", "Name"), QT_TRANSLATE_NOOP("DiskUsage", "Size"),
        QT_TRANSLATE_NOOP("DiskUsage", "Last Access Time"), QT_TRANSLATE_NOOP("DiskUsage", "Path"),
        QT_TRANSLATE_NOOP("DiskUsage", "Raw Size")};
    return column >= 0 && column < FileColumnTotal ? QCoreApplication::translate("DiskUsage", titles[column])
                                                   : QString();
}

FileOrder sortedFiles(const ScanResult &result, const std::vector<FileRecord> &files, FileColumn column,
                      Qt::SortOrder order, const core::CancelFlag &cancel)
try {
    FileOrder sorted(files.size());
    std::iota(sorted.begin(), sorted.end(), 0U);
    switch (column) {
    case FileName:
        sortBy(sorted, order, cancel, [&files](quint32 a, quint32 b) {
            return files[a].name.compare(files[b].name, Qt::CaseInsensitive);
        });
        break;
    case FilePath: {
        const std::vector<int> ranks = folderRanks(result, cancel);
        const auto rank = [&](quint32 i) { return ranks[static_cast<std::size_t>(files[i].folder)]; };
        sortBy(sorted, order, cancel, [&](quint32 a, quint32 b) { return threeWay(rank(a), rank(b)); });
        break;
    }
    case FileLastAccess:
        sortBy(sorted, order, cancel, [&files](quint32 a, quint32 b) {
            return threeWay(files[a].lastAccessTime, files[b].lastAccessTime);
        });
        break;
    default:
        sortBy(sorted, order, cancel,
               [&files](quint32 a, quint32 b) { return threeWay(files[a].size, files[b].size); });
    }
    return sorted;
} catch (const Cancelled &) {
    return {};
}

} // namespace diskusage

using namespace diskusage;

namespace
{

const FileTypeResult &categoryOf(const ScanResult &result, int index)
{
    const auto position = static_cast<std::size_t>(index);
    return position < result.fileTypes.size() ? result.fileTypes[position] : result.others;
}

} // namespace

FileSortThread::FileSortThread(std::shared_ptr<const ScanResult> result, int category, FileColumn column,
                               Qt::SortOrder order)
    : WorkerThread(LowPriority),
      m_result(std::move(result)),
      m_category(category),
      m_column(column),
      m_sortOrder(order)
{
}

void FileSortThread::work()
{
    m_order =
        sortedFiles(*m_result, categoryOf(*m_result, m_category).files, m_column, m_sortOrder, cancelFlag());
}

DataFilesModel::DataFilesModel(QObject *parent) : QAbstractTableModel(parent) {}

DataFilesModel::Contents DataFilesModel::prepared(std::shared_ptr<const ScanResult> result,
                                                  const core::CancelFlag &cancel)
{
    Contents contents;
    contents.result = std::move(result);
    for (std::size_t i = 0; contents.result && i <= contents.result->fileTypes.size(); ++i)
        contents.bySize.push_back(sortedFiles(*contents.result,
                                              categoryOf(*contents.result, static_cast<int>(i)).files,
                                              FileRawSize, Qt::DescendingOrder, cancel));
    return cancel.isSet() ? Contents() : contents;
}

void DataFilesModel::setResult(std::shared_ptr<const ScanResult> result, const core::CancelFlag &cancel)
{
    clear();
    m_contents = prepared(std::move(result), cancel);
}

DataFilesModel::Contents DataFilesModel::replace(Contents contents)
{
    const int shown = m_category;
    showCategory(-1);
    std::swap(m_contents, contents);
    showCategory(shown);
    return contents;
}

void DataFilesModel::clear()
{
    endSorting();
    beginResetModel();
    m_category = -1;
    m_order = {};
    m_contents = {};
    endResetModel();
}

int DataFilesModel::categoryTotal() const
{
    return m_contents.result ? static_cast<int>(m_contents.result->fileTypes.size()) + 1 : 0;
}

const FileTypeResult &DataFilesModel::category(int index) const
{
    return categoryOf(*m_contents.result, index);
}

void DataFilesModel::showCategory(int index)
{
    if (index == m_category)
        return;
    endSorting();
    beginResetModel();
    m_category = index;
    m_order = index >= 0 ? m_contents.bySize[static_cast<std::size_t>(index)] : FileOrder();
    m_shown = {};
    endResetModel();
    // Restores the previously chosen order, unless it is the default.
    if (index >= 0 && !isBySize())
        sort(m_asked.column, m_asked.order);
}

const FileRecord &DataFilesModel::record(int row) const
{
    return category(m_category).files[m_order[static_cast<std::size_t>(row)]];
}

QString DataFilesModel::filePath(int row) const
{
    const FileRecord &file = record(row);
    const QString folder = m_contents.result->path(file.folder);
    return folder.endsWith(QLatin1Char('\\')) ? folder + file.name : folder + QLatin1Char('\\') + file.name;
}

void DataFilesModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0)
        return;
    m_asked = {column, order};
    if (m_category < 0)
        return;
    endSorting();
    if (isBySize()) {
        applyOrder(m_contents.bySize[static_cast<std::size_t>(m_category)]);
        m_shown = m_asked;
        return;
    }
    m_sorter.reset(new FileSortThread(m_contents.result, m_category, static_cast<FileColumn>(column), order));
    connect(m_sorter.get(), &core::WorkerThread::done, this, &DataFilesModel::takeSorted);
    emit sortingChanged(true);
    m_sorter->start();
}

bool DataFilesModel::isBySize() const
{
    return (m_asked.column == FileRawSize || m_asked.column == FileSizeText) &&
           m_asked.order == Qt::DescendingOrder;
}

void DataFilesModel::endSorting()
{
    if (!m_sorter)
        return;
    m_sorter.reset();
    emit sortingChanged(false);
}

void DataFilesModel::takeSorted()
{
    const QString error = m_sorter->error();
    if (error.isEmpty()) {
        applyOrder(m_sorter->takeOrder());
        m_shown = m_asked;
    }
    endSorting();
    if (!error.isEmpty()) {
        m_asked = m_shown;
        emit sortingFailed(tr("This list could not be sorted. %1").arg(error));
    }
}

void DataFilesModel::applyOrder(FileOrder sorted)
{
    if (sorted.size() != m_order.size() || sorted == m_order)
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    int lastRow = -1;
    int newRow = -1;
    for (const QModelIndex &old : before) {
        if (old.row() != lastRow) { // caches the search for all columns of a selected row
            lastRow = old.row();
            const auto found =
                std::find(sorted.begin(), sorted.end(), m_order[static_cast<std::size_t>(lastRow)]);
            newRow = static_cast<int>(found - sorted.begin());
        }
        after.append(index(newRow, old.column()));
    }
    m_order.swap(sorted);
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int DataFilesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_order.size());
}

int DataFilesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(FileColumnTotal);
}

QVariant DataFilesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const int column = index.column();
    if (role == Qt::TextAlignmentRole) {
        const bool number = column == FileSizeText || column == FileRawSize;
        return QVariant((number ? Qt::AlignTrailing : Qt::AlignLeading) | Qt::AlignVCenter);
    }
    const FileRecord &file = record(index.row());
    if (role == Qt::EditRole && column == FileRawSize)
        return file.size;
    return role == Qt::DisplayRole || role == Qt::EditRole ? text(file, column) : QVariant();
}

QVariant DataFilesModel::text(const FileRecord &file, int column) const
{
    switch (column) {
    case FileName:
        return file.name;
    case FileSizeText:
        return core::sizeText(file.size);
    case FileLastAccess:
        return platform::fileTimeText(file.lastAccessTime);
    case FilePath:
        return m_contents.result->path(file.folder);
    default:
        return QString::number(file.size);
    }
}

QVariant DataFilesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole && (section == FileSizeText || section == FileRawSize))
        return QVariant(Qt::AlignTrailing | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? QVariant(fileColumnTitle(section)) : QVariant();
}
