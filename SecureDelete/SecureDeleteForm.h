// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/ReportFile.h"
#include "SecureDelete/SecureDeleteThread.h"
#include "SecureDelete/Settings.h"
#include "platform/RawVolume.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"
#include "widgets/NoticeBar.h"

#include <QTimer>

#include <functional>

class DropFrame;
class FLTabWidget;
class QStackedLayout;
class ScanPage;
class SecureDeleteBinPage;
class SecureDeleteListPage;
class SecureDeleteReportPage;

namespace securedelete
{
class FreeSpaceWipe;
}

// Overwrites, renames and deletes what the user chose, and reports the outcome.
class SecureDeleteForm : public FLWidget
{
    Q_OBJECT

public:
    // Parts of the system that tests replace.
    struct Environment {
        std::function<platform::Medium(const QString &path)> mediumOf;
        std::function<QStringList()> binFolders;
        // Maps a drive to the folder in which the filling folder is created; normally the drive's root.
        std::function<QString(const QString &drive)> freeSpacePlace;

        static Environment real();
    };

    explicit SecureDeleteForm(QWidget *parent = nullptr);
    explicit SecureDeleteForm(Environment environment, QWidget *parent = nullptr);
    ~SecureDeleteForm() override;

public slots:
    // Adds files and folders to the list.
    void addPaths(const QStringList &paths);

    void handleUpdateTotalProgress(int total);
    void handleUpdateDeleteProgress();
    void onDeleteFinish();
    void handleScanCancel();

    void on_deleteButton_clicked();
    void on_optionsButton_clicked();
    void on_wipeFreeSpaceButton_clicked();

signals:
    // For observers outside the form (tests).
    void reportShown();
    void startPageShown();

private:
    void buildStartPage();
    void buildProgressPage();
    void connectAll();
    void showMethod();
    void deleteFromBin(bool all);
    bool mayStart(const QString &what);
    QString questionText(const QString &what, quint64 files, quint64 bytes) const;
    void start(SecureDeleteJob job, QList<int> rowIds);
    void onRowDestroyed(int row);
    void removeDestroyed();
    void showReport(SecureDeleteThread &thread);
    void showStartPage();
    void saveReport(const QString &file, const securedelete::ReportOptions &options);
    void wipeFreeSpace(const QString &drive, quint64 freeBytes);
    void showFreeSpaceEnd(NoticeBar::Kind kind, const QString &text);

    const Environment m_environment;
    QStackedLayout *m_pages;
    DropFrame *m_startPage = nullptr;
    NoticeBar *m_notice = nullptr;
    FLTabWidget *m_tabs = nullptr;
    SecureDeleteListPage *m_list = nullptr;
    SecureDeleteBinPage *m_bin = nullptr;
    ScanPage *m_progress = nullptr;
    SecureDeleteReportPage *m_report = nullptr;
    securedelete::FreeSpaceWipe *m_freeSpace = nullptr;
    QList<int> m_rowIds;       // list ids by row of the running job
    QList<int> m_destroyedIds; // not yet removed from the list
    QTimer m_removeDestroyed;
    securedelete::Settings m_settings; // as of the last question
    QString m_method;                  // of the running job, with its passes
    int m_steps = 0;
    int m_totalSteps = 0;
    JobHost m_jobs;
};
