// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"

#include <QIcon>
#include <QImage>
#include <QStandardItemModel>

#include <memory>
#include <vector>

// One folder of the tree. Holds no data of its own: everything that the row shows is in the result of the
// scan, which the model keeps alive. A drive has a million of these.
class FolderItem : public QStandardItem
{
public:
    FolderItem(diskusage::ScanResult &source, int index, int position);

    diskusage::Folder &folder() const { return m_source->folders[static_cast<std::size_t>(m_index)]; }
    QString path() const { return m_source->path(m_index); }
    FolderItem *parentFolder() const { return static_cast<FolderItem *>(parent()); }
    FolderItem *childFolder(int row) const { return static_cast<FolderItem *>(child(row)); }

    // Its place among the folders of its scan.
    std::size_t number() const { return static_cast<std::size_t>(m_index); }
    // Its row below its parent.
    int position() const { return m_position; }
    // Where it stands among its siblings by name, whatever the case.
    int nameRank() const { return m_nameRank; }
    void setNameRank(int rank) { m_nameRank = rank; }
    // Becomes the row of a folder that was scanned again.
    void takePlaceOf(const FolderItem &old);

    // The value of one of the model's columns, numbers as numbers.
    QVariant value(int column) const;
    // Per cent of the parent's size; 100 for a root.
    double share() const;

    QVariant data(int role = Qt::UserRole + 1) const override;

private:
    diskusage::ScanResult *m_source;
    int m_index;
    int m_position;
    int m_nameRank = 0;
};

// The folder tree of a scan, one row per folder. Built on the scan's thread while no view is attached; after
// that it belongs to the interface thread. Rows exist as items in the first column only, the other columns
// are answered from the item of their row. The edit role gives raw numbers in all columns, so that sorting
// works on numbers.
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

    // A scan begins: one row for the root whose size is not known yet. Replaces what is there.
    void beginScan(const QString &root);
    // A scan has ended: the whole tree.
    void setResult(std::shared_ptr<diskusage::ScanResult> result);
    // Puts a newer scan of the folder at `index` in the place of its old rows and corrects the totals of the
    // folders above. `subtree` is what buildTree() made of `result`. The old rows are given to the caller,
    // because destroying many of them takes longer than an interface may wait. Interface thread.
    std::unique_ptr<FolderItem> replaceFolder(const QModelIndex &index,
                                              std::shared_ptr<diskusage::ScanResult> result,
                                              std::unique_ptr<FolderItem> subtree);

    // The results that no row uses any more since replaceFolder(), for the caller to free after the old rows.
    std::vector<std::shared_ptr<diskusage::ScanResult>> takeUnused() { return std::move(m_unused); }
    // The files of the main scan, which no row needs: for the caller to free when nobody else shows them.
    std::vector<diskusage::FileTypeResult> takeFiles();

    static std::unique_ptr<FolderItem> buildTree(diskusage::ScanResult &result);
    // Destroys a tree without a recursion, which a chain of thousands of folders would carry too deep.
    static void destroyTree(std::unique_ptr<FolderItem> tree);

    // Null for an invalid index.
    FolderItem *folderItem(const QModelIndex &index) const;
    FolderItem *rootFolder() const;
    QModelIndex indexOf(const FolderItem &folder, int column) const;
    // The folder's row for its names from the root's first child down; invalid when there is none.
    QModelIndex find(const QModelIndex &start, const QStringList &names) const;

    // What this Windows shows folders with; null keeps the suite's own icon. Any thread, before a view is
    // attached.
    void setFolderImage(const QImage &image) { m_folderImage = image; }

    int columnCount(const QModelIndex &parent = {}) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    // FolderSortModel puts the rows in order; here each item knows its position, which must stay true.
    void sort(int, Qt::SortOrder) override {}
    // Removing all columns is how the tree is emptied: the rows go with them. Any other range is refused.
    bool removeColumns(int column, int count, const QModelIndex &parent = {}) override;

signals:
    // Around replaceFolder(), with the old and the new item of the same row.
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
    mutable QIcon m_folderIcon; // made from the image on the interface thread when it is first shown
    mutable QIcon m_cloudIcon;
    mutable QIcon m_linkIcon;
};
