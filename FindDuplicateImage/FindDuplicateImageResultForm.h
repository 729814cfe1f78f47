// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/removal/MemberRemoval.h"
#include "FindDuplicateImage/ImageReport.h"
#include "FindDuplicateImage/LatestTask.h"
#include "FindDuplicateImage/ThumbnailCache.h"
#include "core/WorkerThread.h"

#include <QWidget>

#include <optional>

class ComparePane;
class ElidedLabel;
class FindDuplicateImageMainResultThread;
class FLTreeView;
class ImageGroupModel;
class ImageMemberModel;
class NoticeBar;
class QLineEdit;
class QListView;
class QSortFilterProxyModel;
class QToolBar;
class QToolButton;

// The groups of pictures that are alike: on the left a row each; on the right the pictures of the selected
// group, and below them the first one beside the selected one.
class FindDuplicateImageResultForm : public QWidget
{
    Q_OBJECT

public:
    explicit FindDuplicateImageResultForm(QWidget *parent = nullptr);
    ~FindDuplicateImageResultForm() override;

    // Begins to make the report on a worker thread; resultReady() tells its end, unless clear() comes first.
    void prepare(ImageReport report);
    // Lets go of the report, and of the thumbnails and decoders that it holds.
    void clear();
    bool isPreparing() const { return m_prepareThread != nullptr; }
    // A file is being asked about or moved.
    bool isRemoving() const;
    // Ends the preparation soon; it then ends with resultReady(). Whatever is answered to a question about a
    // removal is a no.
    void requestStop();
    const ImageReport &report() const { return m_report; }

signals:
    void prepareReportUpdatePath(QString path); // on the worker thread, for every group
    void resultReady();
    void backToMain();
    void removingChanged(bool removing);

public slots:
    void on_openButton_clicked();
    void on_explorerButton_clicked();
    void on_RecycleBinButton_clicked();

private:
    void buildToolBar();
    QToolButton *addTool(const char *name, const char *icon, const QString &text);
    void buildLists();
    void buildLayout();
    QWidget *buildRight();
    void buildActions();
    void connectAll();

    void showReport();
    void showTotals();
    void showGroup();
    void inspectGroup();
    void showFacts(int group, const std::vector<duplicates::MemberFacts> &facts);
    std::vector<duplicates::FileRecord> files(int group) const;
    void showMember();
    void showButtons();
    void afterRemoval(const duplicates::RemovalResult &result);
    void copyPath();
    void showMenu(const QPoint &where);
    void warn(const QString &text);
    int currentGroup() const;
    int currentMember() const;

    ImageReport m_report;
    ThumbnailCache m_thumbnails;
    ImageGroupModel *m_groups;
    QSortFilterProxyModel *m_found;
    ImageMemberModel *m_members;
    duplicates::MemberRemoval *m_removal;
    int m_removingGroup = -1;
    int m_removingMember = -1;

    QToolBar *m_toolBar;
    QToolButton *m_back;
    QToolButton *m_open;
    QToolButton *m_explorer;
    QToolButton *m_recycle;
    ElidedLabel *m_title;
    ElidedLabel *m_totals;
    NoticeBar *m_notice;
    QLineEdit *m_search;
    FLTreeView *m_side;
    QListView *m_main;
    ComparePane *m_compare;

    LatestTask m_inspection;
    core::WorkerPointer<FindDuplicateImageMainResultThread> m_prepareThread;
};
