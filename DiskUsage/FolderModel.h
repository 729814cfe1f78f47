// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <QIcon>
#include <QImage>
#include <QStandardItemModel>

#include <memory>
#include <vector>

// One folder of the tree. Contains no data of its own: everything shown is in the scan result, which the
// model keeps alive. A drive has a million of these.
class FolderItem : public QStandardItem
{
public:
    FolderItem(diskusage::ScanResult &source, int index, int position);

    diskusage::Folder &folder() const { return m_source->folders[static_cast<std::size_t>(m_index)]; }
    QString path() const { return m_source->path(m_index); }
    FolderItem *parentFolder() const { return static_cast<FolderItem *>(parent()); }
    FolderItem *childFolder(int row) const { return static_cast<FolderItem *>(child(row)); }

    // Its index among the folders of its scan.
    std::size_t number() const { return static_cast<std::size_t>(m_index); }
    // Its row in its parent.
    int position() const { return m_position; }
    // Its rank among its siblings by name, ignoring case.
    int nameRank() const { return m_nameRank; }
    void setNameRank(int rank) { m_nameRank = rank; }
    // Replaces the row of a folder that was rescanned.
    void takePlaceOf(const FolderItem &old);

    // The value of a model column; numbers as numbers.
    QVariant value(int column) const;
    // Percentage of the parent's size; 100 for a root.
    double share() const;

    QVariant data(int role = Qt::UserRole + 1) const override;

private:
    diskusage::ScanResult *m_source;
    int m_index;
    int m_position;
    int m_nameRank = 0;
};

// The folder tree of a scan, one row per folder. Built on the scan thread while no view is attached; after
// that it belongs to the interface thread. Items exist in the first column only; the other columns are
// computed from them. The edit role returns raw numbers in all columns, for sorting.
class FolderModel : public QStandardItemModel
{
    Q_OBJECT

public:
    enum Column {
        Name,
        SizeText,
        FileCount,
        FolderCount,
        Size,
        Path,
        Percentage,
        MaxData,
        Index,
        ColumnTotal
    };

    explicit FolderModel(QObject *parent = nullptr);
    ~FolderModel() override;

    // Start of a scan: replaces the content by a single row for the root, of unknown size.
    void beginScan(const QString &root);
    // End of a scan: sets the whole tree.
    void setResult(std::shared_ptr<diskusage::ScanResult> result);
    // Replaces the rows of the folder at `index` by a newer scan, and corrects the totals of its ancestors.
    // `subtree` is the result of buildTree() for `result`. Returns the old rows, since destroying many of
    // them takes too long for the interface thread. Interface thread only.
    std::unique_ptr<FolderItem> replaceFolder(const QModelIndex &index,
                                              std::shared_ptr<diskusage::ScanResult> result,
                                              std::unique_ptr<FolderItem> subtree);

    // Results that no row uses any more after replaceFolder(); to be freed by the caller after the old rows.
    std::vector<std::shared_ptr<diskusage::ScanResult>> takeUnused() { return std::move(m_unused); }
    // The file lists of the main scan, which no row needs; to be freed by the caller when nothing else shows
    // them.
    std::vector<diskusage::FileTypeResult> takeFiles();

    static std::unique_ptr<FolderItem> buildTree(diskusage::ScanResult &result);
    // Destroys a tree without recursion, which could overflow the stack for a chain of thousands of folders.
    static void destroyTree(std::unique_ptr<FolderItem> tree);

    // Null for an invalid index.
    FolderItem *folderItem(const QModelIndex &index) const;
    FolderItem *rootFolder() const;
    QModelIndex indexOf(const FolderItem &folder, int column) const;
    // The folder's row, by names from the root's first child down; invalid if there is none.
    QModelIndex find(const QModelIndex &start, const QStringList &names) const;

    // Windows' folder icon; null keeps the suite's own. Any thread, before a view is attached.
    void setFolderImage(const QImage &image) { m_folderImage = image; }

    int columnCount(const QModelIndex &parent = {}) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    // Does nothing: FolderSortModel sorts, and each item relies on its position here.
    void sort(int, Qt::SortOrder) override {}
    // Supports only removing all columns, with which the tree is cleared together with its rows.
    bool removeColumns(int column, int count, const QModelIndex &parent = {}) override;

signals:
    // Emitted around replaceFolder(), with the old and new item of the same row.
    void folderAboutToBeReplaced(const FolderItem *folder);
    void folderReplaced(FolderItem *folder);

private:
    const QIcon &icon(const diskusage::Folder &folder) const;
    void correctTotals(FolderItem &above, const diskusage::Folder &before, const diskusage::Folder &now);
    void adoptTree(std::unique_ptr<FolderItem> tree);
    std::unique_ptr<FolderItem> takeTree();

    std::vector<std::shared_ptr<diskusage::ScanResult>> m_results; // the first is the main scan
    std::vector<std::shared_ptr<diskusage::ScanResult>> m_unused;
    QImage m_folderImage;
    mutable QIcon m_folderIcon; // created from the image on the interface thread on first use
    mutable QIcon m_cloudIcon;
    mutable QIcon m_linkIcon;
};
