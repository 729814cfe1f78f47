// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include "core/WorkerThread.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

namespace diskusage
{

// Columns of the file lists, both of the biggest files and of a category.
enum FileColumn { FileName, FileSizeText, FileLastAccess, FilePath, FileRawSize, FileColumnTotal };

QString fileColumnTitle(int column);

// A sort order: indexes into the list of records.
using FileOrder = std::vector<quint32>;

// Stable: equal records stay in scan order. Empty when cancelled.
FileOrder sortedFiles(const ScanResult &result, const std::vector<FileRecord> &files, FileColumn column,
                      Qt::SortOrder order, const core::CancelFlag &cancel);

} // namespace diskusage

// Sorts the records of a category.
class FileSortThread : public core::WorkerThread
{
    Q_OBJECT

public:
    FileSortThread(std::shared_ptr<const diskusage::ScanResult> result, int category,
                   diskusage::FileColumn column, Qt::SortOrder order);

    // Valid after done().
    diskusage::FileOrder takeOrder() { return std::move(m_order); }

protected:
    void work() override;

private:
    std::shared_ptr<const diskusage::ScanResult> m_result;
    int m_category;
    diskusage::FileColumn m_column;
    Qt::SortOrder m_sortOrder;
    diskusage::FileOrder m_order;
};

// The files of one file-type category at a time, from the records of a scan. Texts are created only for
// visible rows, and sorting orders an array of numbers on a worker thread, so that a million files are as
// fast as ten. Filled on the scan thread while no view is attached.
class DataFilesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit DataFilesModel(QObject *parent = nullptr);

    // A result and the data derived from it, computed on any thread: the files of each category, largest
    // first. Null if cancelled, or without a result.
    struct Contents {
        std::shared_ptr<const diskusage::ScanResult> result;
        std::vector<diskusage::FileOrder> bySize;
    };
    static Contents prepared(std::shared_ptr<const diskusage::ScanResult> result,
                             const core::CancelFlag &cancel);
    // Shows new contents with the current category and order. Returns the previous contents, since freeing
    // them may take long.
    Contents replace(Contents contents);

    // Empty afterwards if cancelled.
    void setResult(std::shared_ptr<const diskusage::ScanResult> result, const core::CancelFlag &cancel = {});
    void clear();

    // The categories in table order, followed by the files of no category.
    int categoryTotal() const;
    const diskusage::FileTypeResult &category(int index) const;
    int shownCategory() const { return m_category; }
    // -1 shows none.
    void showCategory(int index);

    const std::shared_ptr<const diskusage::ScanResult> &result() const { return m_contents.result; }
    const diskusage::FileOrder &order() const { return m_order; }
    const diskusage::FileRecord &record(int row) const;
    QString filePath(int row) const;

    // Returns at once; the rows change when sorting has finished.
    int sortColumn() const { return m_asked.column; }
    Qt::SortOrder sortOrder() const { return m_asked.order; }
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    void sortingChanged(bool running);
    // Rows, column and order are unchanged. A text for the user.
    void sortingFailed(const QString &message);

private:
    struct Sorting {
        int column = diskusage::FileSizeText;
        Qt::SortOrder order = Qt::DescendingOrder;
    };

    void endSorting();
    void takeSorted();
    void applyOrder(diskusage::FileOrder sorted);
    bool isBySize() const; // the requested order is the one stored in the contents
    QVariant text(const diskusage::FileRecord &file, int column) const;

    Contents m_contents;
    int m_category = -1;
    Sorting m_asked;
    Sorting m_shown; // the order of the current rows; differs while sorting
    diskusage::FileOrder m_order;
    core::WorkerPointer<FileSortThread> m_sorter;
};
