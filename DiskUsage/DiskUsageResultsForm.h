// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DiskUsage/engine/Scan.h"
#include "platform/Drives.h"
#include "widgets/CsvExporter.h"

#include <QModelIndex>
#include <QPointer>
#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class BiggestFilesModel;
class BiggestFilesPage;
class DataFilesModel;
class ElidedLabel;
class FLTabWidget;
class FileTypesPage;
class FolderModel;
class FoldersPage;
class NotCountedPage;
class PageHeader;
class QPushButton;

// What is shown of a finished scan. The models belong to the caller.
struct ScanView {
    QString root;
    FolderModel *folders = nullptr;
    BiggestFilesModel *biggestFiles = nullptr;
    DataFilesModel *dataFiles = nullptr;
    std::shared_ptr<const diskusage::ScanResult> result;
    core::FileTypeTable fileTypes; // with which it was scanned
    qint64 milliseconds = 0;
    std::optional<platform::Drive> drive; // of a scanned drive root, when it is known
};

// The results page: totals, and below them the folders, the biggest files, the file types and the folders
// that are not counted. Runs the export of the shown table.
class DiskUsageResultsForm : public QWidget
{
    Q_OBJECT

public:
    explicit DiskUsageResultsForm(QWidget *parent = nullptr);
    ~DiskUsageResultsForm() override;

    void showScan(const ScanView &view);
    // Detaches every model, which may then be freed on another thread. An export, which reads them, is ended
    // without a word.
    void detach();

    // A folder of the result was scanned again and its rows were replaced.
    void folderReplaced(const QString &path, const diskusage::Folder &before,
                        const diskusage::ScanResult &now);
    void showNotice(const QString &text, NoticeBar::Kind kind = NoticeBar::Kind::Info);
    // What Windows says of the scanned drive now; other drives do not matter.
    void showDrive(const platform::Drive &drive);

    bool isExporting() const;
    // While a job runs that the result must not be changed under.
    void setBusy(bool busy, const QString &text = {});

signals:
    void back();
    void scanAllAgain();
    void scanFolderAgain(const QModelIndex &folder);
    void stopFolderScan();

private:
    void buildHeader();
    void buildTabs();
    void buildLayout();
    void buildActions();
    void connectPages();

    void showTotals();
    void showNotCounted();
    // The page's own, and those of the tables that export themselves.
    std::array<CsvExporter *, 3> exporters() const;
    void exportCurrentTable();
    // `table` is asked twice: what is shown may change while the file dialog is open.
    void exportTable(const std::function<csv::Table()> &table);

    ScanView m_view;
    PageHeader *m_header;
    QPushButton *m_again;
    QPushButton *m_exportButton;
    NoticeBar *m_notice;
    QPointer<QWidget> m_focusBefore; // a job began
    QWidget *m_busyBar;
    ElidedLabel *m_busyText;
    QPushButton *m_busyStop;
    FLTabWidget *m_tabs;
    FoldersPage *m_folders;
    BiggestFilesPage *m_biggest;
    FileTypesPage *m_types;
    NotCountedPage *m_notCounted;
    CsvExporter *m_exporter;
};
