// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/Settings.h"
#include "DiskUsage/engine/Siblings.h"
#include "core/LatestAnswer.h"

#include <QWidget>

class ElidedLabel;
class FLTabWidget;
class FLTreeWidget;
class NoticeBar;
class QCheckBox;
class QPushButton;
class QToolButton;

// The options page: file-type categories and excluded folders. Edits take effect when saved.
class DiskUsageOptionsForm : public QWidget
{
    Q_OBJECT

public:
    explicit DiskUsageOptionsForm(QWidget *parent = nullptr);
    // With another function that finds the additional folders matched by an exclusion.
    explicit DiskUsageOptionsForm(diskusage::SiblingFinder siblings, QWidget *parent = nullptr);
    ~DiskUsageOptionsForm() override;

    // Reads the stored options, discarding unsaved edits.
    void load();
    bool hasUnsavedChanges() const;
    // Leaves the page after asking about unsaved edits. False if it stays.
    bool tryClose();

signals:
    void closed();

public slots:
    void on_newFileTypeValue(const QString &displayText);

protected:
    void showEvent(QShowEvent *event) override;

private slots:
    void on_saveButton_clicked();
    void on_FileTypesEditButton_clicked();
    void on_FileTypesRestoreButton_clicked();
    void on_excludeOneDrivecheckBox_toggled(bool checked);
    void on_openOneDriveButton_clicked();
    void on_excludeAddButton_clicked();
    void on_excludeRemoveButton_clicked();

private:
    QWidget *buildFileTypesTab();
    QWidget *buildExcludeTab();
    void buildOneDrive();
    void buildLayout();
    void connectAll();

    void showFileTypes(const core::FileTypeTable &table);
    void showExcludedFolders(const std::vector<core::ExcludedFolder> &folders);
    void addExcludedRow(const core::ExcludedFolder &folder);
    diskusage::ScanSettings edited() const;
    void editsChanged();
    void checkSiblings();
    void showSiblings(const QStringList &siblings);

    diskusage::ScanSettings m_stored;
    core::FileTypeTable m_fileTypes; // as edited, except for the check boxes
    QString m_oneDrive;

    QToolButton *m_back;
    FLTabWidget *m_tabs;
    QPushButton *m_save;
    FLTreeWidget *m_fileTypeTree;
    QPushButton *m_edit;
    QPushButton *m_restore;
    QCheckBox *m_excludeOneDrive;
    ElidedLabel *m_oneDriveLabel;
    QPushButton *m_openOneDrive;
    FLTreeWidget *m_excluded;
    QPushButton *m_excludeAdd;
    QPushButton *m_excludeRemove;
    ElidedLabel *m_siblingNote;
    NoticeBar *m_notice;
    bool m_loading = false;
    diskusage::SiblingFinder m_findSiblings;
    core::LatestAnswer m_siblings;
    std::optional<QStringList> m_checkedFolders; // for which the check was last made
};
