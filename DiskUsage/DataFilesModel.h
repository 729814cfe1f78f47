// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include "core/WorkerThread.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

namespace diskusage
{

// Columns of the lists of files, the biggest ones as well as those of a category.
enum FileColumn { FileName, FileSizeText, FileLastAccess, FilePath, FileRawSize, FileColumnTotal };

QString fileColumnTitle(int column);

// The order of the records of a list: indexes into it.
using FileOrder = std::vector<quint32>;

// Records with equal values stay in the order in which the scan met them. Empty when cancelled.
FileOrder sortedFiles(const ScanResult &result, const std::vector<FileRecord> &files, FileColumn column,
                      Qt::SortOrder order, const core::CancelFlag &cancel);

} // namespace diskusage

// Puts the records of one category in order.
class FileSortThread : public core::WorkerThread
{
    Q_OBJECT

public:
    FileSortThread(std::shared_ptr<const diskusage::ScanResult> result, int category,
                   diskusage::FileColumn column, Qt::SortOrder order);

    // After done().
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

// The files of one file-type category at a time, out of the records of a scan: texts are made for the rows
// that are on the screen only, and sorting orders an array of numbers on a thread of its own, so that a
// million files are no heavier to look at than ten. Filled on the scan's thread while no view is attached.
class DataFilesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit DataFilesModel(QObject *parent = nullptr);

    // A result and what is worked out from it beforehand, on any thread: the files of every category, largest
    // first. Null when it was cancelled or there is no result.
    struct Contents {
        std::shared_ptr<const diskusage::ScanResult> result;
        std::vector<diskusage::FileOrder> bySize;
    };
    static Contents prepared(std::shared_ptr<const diskusage::ScanResult> result,
                             const core::CancelFlag &cancel);
    // Shows these instead, in the category and order as before. Gives back the former contents, which may
    // take long to free.
    Contents replace(Contents contents);

    // Empty afterwards when cancelled.
    void setResult(std::shared_ptr<const diskusage::ScanResult> result, const core::CancelFlag &cancel = {});
    void clear();

    // The categories in table order, and after them the files of no category.
    int categoryTotal() const;
    const diskusage::FileTypeResult &category(int index) const;
    int shownCategory() const { return m_category; }
    // -1 shows none.
    void showCategory(int index);

    const std::shared_ptr<const diskusage::ScanResult> &result() const { return m_contents.result; }
    const diskusage::FileOrder &order() const { return m_order; }
    const diskusage::FileRecord &record(int row) const;
    QString filePath(int row) const;

    // Returns at once; the rows move when sorting has ended.
    int sortColumn() const { return m_asked.column; }
    Qt::SortOrder sortOrder() const { return m_asked.order; }
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    void sortingChanged(bool running);
    // Rows, column and order are what they were before. In words for the user.
    void sortingFailed(const QString &message);

private:
    struct Sorting {
        int column = diskusage::FileSizeText;
        Qt::SortOrder order = Qt::DescendingOrder;
    };

    void endSorting();
    void takeSorted();
    void applyOrder(diskusage::FileOrder sorted);
    bool isBySize() const; // what the contents hold is what is asked for
    QVariant text(const diskusage::FileRecord &file, int column) const;

    Contents m_contents;
    int m_category = -1;
    Sorting m_asked;
    Sorting m_shown; // of the rows as they are; differs while a sort runs
    diskusage::FileOrder m_order;
    core::WorkerPointer<FileSortThread> m_sorter;
};
