// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches the main window from outside: showing and closing, keys, messages of the companions.
#include "app/CloseCheck.h"
#include "app/HomeForm.h"
#include "app/MainWindow.h"
#include "app/ThumbnailRemovalDialog.h"
#include "app/WindowGeometry.h"
#include "imaging/engine/ThumbnailStore.h"
#include "platform/TopLevelWindows.h"
#include "widgets/FLWidget.h"

#include <QCloseEvent>
#include <QDebug>
#include <QDir>
#include <QMenu>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QWindow>

#include <windows.h>

#include <algorithm>

namespace
{

constexpr int stoppingNote = 8000; // ms

} // namespace

void MainWindow::restoreGeometryValues()
{
    // The system speaks of physical pixels, Qt of its own, larger ones.
    const platform::ScreenMetrics metrics = platform::fullScreenClientArea();
    const auto logical = [this](quint32 pixels) {
        return static_cast<quint32>(pixels / screen()->devicePixelRatio());
    };
    setGeometry(fitted(storedGeometry(), logical(metrics.cx), logical(metrics.cy)).rect());
}

void MainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_shownBefore)
        return;
    m_shownBefore = true;
    windowHandle()->installEventFilter(this);
    m_home->setFocus(); // not the tool bar, which comes first
    QList<QRect> screens;
    for (const QScreen *each : screen()->virtualSiblings())
        screens.append(each->availableGeometry());
    const int titleHeight = std::max(geometry().top() - frameGeometry().top(),
                                     style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
    const QRect frame(frameGeometry().left(), geometry().top() - titleHeight, frameGeometry().width(),
                      geometry().height() + titleHeight);
    const QPoint place = visiblePosition(frame, titleHeight, screens);
    if (place != frame.topLeft())
        setGeometry(geometry().translated(place - frame.topLeft()));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    storeGeometry(WindowGeometry::of(geometry()));

    if (!mayLeaveShownPage()) {
        event->ignore();
        return;
    }
    QList<FLWidget *> pages;
    for (const Module *module : m_table.inCloseOrder()) {
        if (FLWidget *page = m_pages.value(module->id))
            pages.append(page);
    }
    const CloseCheck check = askPagesToStop(pages);
    event->setAccepted(check.mayClose);
    if (!check.mayClose)
        showStopping(check.stopping);
    // Also while a page is busy: for one that still uses them, a thumbnail that is gone is an empty picture.
    if (imaging::ThumbnailStore::produced()) {
        event->ignore();
        removeThumbnailsThenClose();
    }
}

void MainWindow::showStopping(const QStringList &jobs)
{
    const QString text = tr("Stopping what is running. Close the window again when it has ended.");
    statusBar()->showMessage(jobs.isEmpty() ? text : text + QLatin1Char(' ') + jobs.join(QLatin1String("; ")),
                             stoppingNote);
}

void MainWindow::removeThumbnailsThenClose()
{
    if (m_thumbnailDialog)
        return;
    m_thumbnailDialog = new ThumbnailRemovalDialog(this);
    connect(m_thumbnailDialog, &ThumbnailRemovalDialog::closeApp, this, &MainWindow::OnCloseApp);
    m_thumbnailDialog->open();
    m_thumbnailDialog->start(QDir::tempPath());
}

void MainWindow::OnCloseApp()
{
    if (m_thumbnailDialog) {
        qDebug() << "removeThumbnailsDialog";
        m_thumbnailDialog->close();
        m_thumbnailDialog.clear();
    }
    close();
}

void MainWindow::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menu = createPopupMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
    event->accept();
}

void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Shift)
        tellPages(ShellEvent::ShiftDown);
    QMainWindow::keyPressEvent(event);
}

void MainWindow::keyReleaseEvent(QKeyEvent *event)
{
    tellPages(ShellEvent::ShiftUp); // whatever the key
    QMainWindow::keyReleaseEvent(event);
}

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::BackButton)
        m_backAction->trigger();
    else
        QMainWindow::mousePressEvent(event);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle() && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Back || QKeySequence(key->keyCombination()) == m_backAction->shortcut()) {
            m_backAction->trigger();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

bool MainWindow::nativeEvent(const QByteArray &, void *message, qintptr *)
{
    const auto *received = static_cast<const MSG *>(message);
    switch (received->message) {
    case platform::messageLoggedOnly:
        qDebug() << "Message recieved";
        break;
    case platform::messageRefreshIconExtractor:
        tellPages(ShellEvent::RefreshIcons);
        break;
    case platform::messageStayAwakeState:
        tellPages(ShellEvent::StayAwakeState, static_cast<quint32>(received->wParam));
        break;
    default:
        break;
    }
    return false;
}

void MainWindow::tellPages(ShellEvent event, quint32 value)
{
    for (auto page = m_pages.cbegin(); page != m_pages.cend(); ++page) {
        const Module *module = m_table.find(page.key());
        if (module && module->wants(event))
            page.value()->shellEvent(event, value);
    }
}
