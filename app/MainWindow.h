// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ModuleTable.h"
#include "app/RunningJobs.h"
#include "widgets/FLWidget.h"

#include <QMainWindow>
#include <QPointer>

#include <memory>

class CompanionLauncher;
class PageStack;
struct ShellActions;
class SidePanel;
class ThumbnailRemovalDialog;

// The only main window: toolbar, side panel and a stack of pages. A page is created when its module is first
// opened, and lives as long as the window. Modules are known through the table only.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The table must outlive the window.
    explicit MainWindow(QWidget *parent = nullptr, const ModuleTable &table = moduleTable());
    ~MainWindow() override;

signals:
    // The window has been closed, and the program ends.
    void closed();

public slots:
    void OnAbout(bool checked);
    void OnUpdate(bool checked);
    void OnExitApp();
    void OnCloseApp();
    void onOpenModule(int index);
    // Sent by a page: false when a job starts, true when it has ended. Shown on the module's card and in the
    // side panel, since the user may be on another page.
    void OnShowToolbarSignal(bool show);
    // The toolbar has no save button; pages have their own.
    void enableSaveButton() {}
    void disableSaveButton() {}

    void on_HomeButton_clicked();
    void on_miscToolsButton_clicked() { openMiscTools(); }
    void on_autoDarkButton_clicked() { openFromPanel(0); }
    void on_autoWallpaperChangerButton_clicked() { openFromPanel(1); }
    void on_diskUsageButton_clicked() { openFromPanel(2); }
    void on_findDuplicateButton_clicked() { openFromPanel(3); }
    void on_secureDeleteButton_clicked() { openFromPanel(4); }
    void on_systemInfoButton_clicked() { openFromPanel(5); }
    void on_trackCleanerButton_clicked() { openFromPanel(6); }
    void on_transparentTaskbarButton_clicked() { openFromPanel(7); }
    void on_troubleshooterButton_clicked() { openFromPanel(8); }
    void on_larkspurButton_clicked() { openFromPanel(9); }
    void on_smartShortcutButton_clicked() { openFromPanel(10); }
    void on_processManagerButton_clicked() { openFromPanel(11); }
    void on_myTrayIconButton_clicked() { openFromPanel(12); }
    void on_hotkeyButton_clicked() { openFromPanel(13); }
    void on_regwickButton_clicked() { openFromPanel(14); }
    void on_convertImageButton_clicked() { openFromPanel(15); }
    void on_qrCodeGenButton_clicked() { openFromPanel(16); }
    void on_winIconGeneratorButton_clicked() { openFromPanel(17); }
    void on_winIconExtractorButton_clicked() { openFromPanel(18); }
    void on_stayAwakeButton_clicked() { openFromPanel(19); }
    void on_findDuplicateImageButton_clicked() { openFromPanel(20); }

protected:
    QMenu *createPopupMenu() override;
    void closeEvent(QCloseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool nativeEvent(const QByteArray &eventType, void *message, qintptr *result) override;
    // Handles keys that reach the native window, that is, keys that no shortcut took, before the focused
    // widget gets them.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildWidgets();
    void buildLayouts();
    void connectActions();
    void connectSidePanel();

    // Opens a module: allocates the number first, then shows the page with that number.
    int openNumbered(int id);
    void openFromPanel(int id);
    void openMiscTools();
    void showApp(int number);
    void goBack();
    void connectPage(const Module &module, FLWidget *page);
    // Makes the visible page current again, after opening something that has no page.
    void returnToShownPage();
    void onLauncherFinished(int id);
    void checkOnly(int number);
    void showJob(int id, RunningJobs::State state);

    void tellPages(ShellEvent event, quint32 value = 0);
    void showStopping(const QStringList &jobs);
    void removeThumbnailsThenClose();

    const ModuleTable &m_table;
    PageStack *m_pages = nullptr;
    RunningJobs m_jobs;
    bool m_shownBefore = false;

    SidePanel *m_sidePanel = nullptr;
    std::unique_ptr<ShellActions> m_actions;
    CompanionLauncher *m_launcher = nullptr;
    QPointer<ThumbnailRemovalDialog> m_thumbnailDialog;
};
