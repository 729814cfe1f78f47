// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FileTypes.h"
#include "widgets/CsvFile.h"

#include <QModelIndex>
#include <QTimer>
#include <QWidget>

#include <memory>

class ElidedLabel;
class FLTreeView;
class FolderModel;
class FolderSortModel;
class PathActions;
class PathBar;
class UsageGraph;

// The folder tree beside the usage graph of the selected folder, with its path above both.
class FoldersPage : public QWidget
{
    Q_OBJECT

public:
    explicit FoldersPage(QWidget *parent = nullptr);
    ~FoldersPage() override;

    // Null detaches the model, which may then be freed on another thread.
    void setModel(FolderModel *model, const core::FileTypeTable &fileTypes = {});

    // Index of the folder model; the root if nothing is selected.
    QModelIndex currentFolder() const;
    QString currentPath() const;
    void selectFolder(const QModelIndex &folder);
    // Updates graph and path bar after rows have changed.
    void refresh();
    csv::Table csvTable() const;
    PathActions *treeActions() const { return m_actions; }
    PathActions *graphActions() const { return m_graphActions; }

signals:
    void scanAgain(const QModelIndex &folder);
    void exportTable();
    void failed(const QString &message);

private:
    void buildTree();
    void buildGraph();
    void buildLayout();
    void connectTree();
    void connectGraph();
    void connectActions(PathActions *actions);

    void showCurrent();
    void enter(const QStringList &names);
    void goUp();
    // The current file or folder in the graph.
    QString graphPath() const;
    void showColumnWidths();
    int nameWidth(int level) const;
    void makeRoomForLevel(int level);
    void scrollToName(const QModelIndex &row);

    FolderModel *m_model = nullptr;
    std::unique_ptr<core::FileTypeMatcher> m_matcher;
    QStringList m_categories;
    FolderSortModel *m_sorted;
    PathBar *m_pathBar;
    FLTreeView *m_tree;
    UsageGraph *m_graph;
    ElidedLabel *m_graphTitle;
    PathActions *m_actions;
    PathActions *m_graphActions;
    int m_deepestLevel = 0; // deepest level expanded so far; the root is level 0
    QTimer m_later;         // a held arrow key passes many folders per second: only the last one is drawn
};
