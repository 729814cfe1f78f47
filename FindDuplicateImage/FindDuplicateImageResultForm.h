// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/removal/MemberRemoval.h"
#include "FindDuplicateImage/ImageReport.h"
#include "core/LatestAnswer.h"
#include "imaging/ThumbnailCache.h"
#include "widgets/JobHost.h"

#include <QTimer>
#include <QWidget>

#include <utility>

class ComparePane;
class ElidedLabel;
class FLTreeView;
class ImageGroupModel;
class ImageMemberModel;
class NoticeBar;
class QAction;
class QComboBox;
class QLineEdit;
class QListView;
class QSplitter;
class QToolBar;
class QToolButton;
struct OpenedSeveral;

// The groups of pictures that are alike: on the left a row each; on the right the pictures of the selected
// group, and below them the first one beside the selected one, or the two that are selected.
class FindDuplicateImageResultForm : public QWidget
{
    Q_OBJECT

public:
    explicit FindDuplicateImageResultForm(QWidget *parent = nullptr);
    ~FindDuplicateImageResultForm() override;

    // Shows the report; resultReady() follows. Which pictures are still there is asked of the disk
    // afterwards.
    void prepare(ImageReport report);
    // Lets go of the report, and of the thumbnails and decoders that it holds.
    void clear();
    // A file is being asked about or moved.
    bool isRemoving() const { return m_removal->isRunning(); }
    void warn(const QString &text);
    const ImageReport &report() const { return m_report; }

signals:
    void prepareReportUpdatePath(QString path); // of the first group, while the report is made
    void resultReady();
    void backToMain();

public slots:
    void on_openButton_clicked();
    void on_explorerButton_clicked();
    void on_RecycleBinButton_clicked();

private:
    void buildToolBar();
    QToolButton *addTool(const char *name, const char *icon, const QString &text);
    void buildGroupList();
    void buildMemberList();
    void buildLayout();
    QWidget *buildRight();
    void buildActions();
    void connectAll();

    void showEmptySearch();
    void showTotals();
    void showListed();
    void refresh();
    void askFirsts();
    void showGroup();
    void inspectGroup();
    void showFacts(int group, const std::vector<duplicates::MemberFacts> &facts);
    std::vector<duplicates::FileRecord> files(int group) const;
    void showMember();
    void showButtons();
    void setUsable(bool usable);
    void showLooking();
    void afterRemoval(const duplicates::RemovalResult &result);
    void copyPath();
    void showMenu(const QPoint &where);
    void showGroupMenu(const QPoint &where);
    void tell(const OpenedSeveral &opened);
    // Rows of m_members, -1 for none.
    QList<int> selectedMembers() const;
    std::pair<int, int> comparedMembers() const;
    int removableMember() const;
    QStringList selectedPaths() const;
    void selectGroupRow(int row);

    ImageReport m_report;
    imaging::ThumbnailCache m_thumbnails;
    ImageGroupModel *m_groups;
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
    QSplitter *m_splitter;
    QLineEdit *m_search;
    QComboBox *m_order;
    FLTreeView *m_side;
    QListView *m_main;
    ComparePane *m_compare;
    QAction *m_openAction;
    QAction *m_explorerAction;
    QAction *m_copyAction;
    QAction *m_recycleAction;
    QAction *m_openBin;    // in the notice after a removal
    QAction *m_cancelLook; // in the notice before its question

    QTimer m_searchLater;            // a fast typist is not kept waiting by every letter
    bool m_searchWaits = false;      // for the end of a removal
    core::LatestAnswer m_firsts;     // which groups still have their first picture
    core::LatestAnswer m_inspection; // the pictures of the group on show
    JobHost m_jobs;
};
