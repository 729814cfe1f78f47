// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/TrackCleanerThread.h"
#include "TrackCleaner/engine/Clear.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"

#include <array>
#include <functional>
#include <memory>

class ElidedLabel;
class PageHeader;
class QAction;
class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QToolButton;
class QVBoxLayout;
class TrackCleanerClearThread;

namespace tracks
{
class ItemRow;
}

// The track cleaner: scans for traces, lists them, and clears exactly what was chosen from that list. After
// clearing it scans the same items again.
class TrackCleanerForm : public FLWidget
{
    Q_OBJECT

public:
    explicit TrackCleanerForm(QWidget *parent = nullptr);
    // `locations` is called on the scan thread.
    TrackCleanerForm(TrackCleanerThread::LocationReader locations, QWidget *parent);
    ~TrackCleanerForm() override;

    // The current scan; null before the first one.
    const std::shared_ptr<const tracks::ScanResult> &found() const { return m_found; }

public slots:
    void analyze();
    void clear();
    void cancel();
    void showDetails(tracks::Item item);
    void showWhatStayed();
    // Saves the found registry entries to a file of the user's choice.
    void saveRegistryEntries();
    void putRegistryEntriesBack();

    void onFileExplorerRecentFilesScanFinish(int count);
    void onFileExplorerTypedPathsScanFinish(int count);
    void onFileExplorerSearchHistoryScanFinish(int count);
    void onWindowsRunDialogScanFinish(int count);
    void onWindowsLogFilesScanFinish(int count, int size);
    void onWindowsErrorReportingScanFinish(int count, int size);
    void onWindowsNetworkDataScanFinish(int count, int size);
    void onWindowsTempFilesScanFinish(int count, int size);
    void onTrackCleanerProcessScanFinish();

    void onFileExplorerRecentFilesClearFinish(int count);
    void onFileExplorerTypedPathsClearFinish(int count);
    void onFileExplorerSearchHistoryClearFinish(int count);
    void onWindowsRunDialogClearFinish(int count);
    void onWindowsLogFilesClearFinish(int count, int size);
    void onWindowsErrorReportingClearFinish(int count, int size);
    void onWindowsNetworkDataClearFinish(int count, int size);
    void onWindowsTempFilesClearFinish(int count, int size);
    void onTrackCleanerProcessClearFinish(int deletedFiles);

signals:
    void analyzed(); // counts are up to date, after an analysis or a clearing

private:
    // What the last clearing could not remove, with the list it worked on.
    struct Leftovers {
        std::shared_ptr<const tracks::ScanResult> found;
        std::vector<tracks::Stayed> stayed;
    };

    void buildHeader(QVBoxLayout *page);
    void buildGroups(QVBoxLayout *page);
    QWidget *buildGroup(tracks::Group group);
    void buildFooter(QVBoxLayout *page);
    void loadSettings();

    void startScan(const tracks::ItemFlags &items);
    void takeScan(const TrackCleanerThread &scan);
    void startClearing(tracks::ClearPlan plan);
    void takeClearing(const TrackCleanerClearThread &clearing);
    void saveEntries(const std::function<void(bool saved)> &then);
    void clearUnlessChanged(const tracks::ClearPlan &plan, bool saved);
    void showSmallJob(const QString &title);
    tracks::ItemFlags checked() const;
    tracks::ClearPlan plan() const;
    void forget();
    void showCount(tracks::Item item, int count, int size);
    void showItem(tracks::Item item);
    void showState();
    void showProgress(const QString &title, const core::ScanProgress &progress, bool known);

    TrackCleanerThread::LocationReader m_locations;
    JobHost m_jobs;

    PageHeader *m_header;
    NoticeBar *m_notice;
    QToolButton *m_save = nullptr;
    QToolButton *m_putBack = nullptr;
    QAction *m_stayedAction;
    std::array<tracks::ItemRow *, tracks::itemCount> m_rows{};
    QCheckBox *m_keepUsedToday = nullptr;
    QLabel *m_summary;
    QLabel *m_progressLabel;
    ElidedLabel *m_progressPath;
    QProgressBar *m_progress;
    QPushButton *m_analyze = nullptr;
    QPushButton *m_clear = nullptr;
    QPushButton *m_cancel = nullptr;

    std::shared_ptr<const tracks::ScanResult> m_found;
    std::shared_ptr<const tracks::ScanResult> m_forgotten; // no longer shown; m_leftOut refers to it
    tracks::LeftOut m_leftOut;
    Leftovers m_leftovers;
    bool m_cancelPressed = false;
    // The notice to show when the scan after a clearing is done.
    QString m_clearingText;
};
