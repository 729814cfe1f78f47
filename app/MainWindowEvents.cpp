// SPDX-License-Identifier: GPL-3.0-or-later
// Events of the main window from outside: showing and closing, keys, messages of companions.
#include "app/CloseCheck.h"
#include "app/HomeForm.h"
#include "app/MainWindow.h"
#include "app/PageStack.h"
#include "app/ShellActions.h"
#include "app/ThumbnailRemovalDialog.h"
#include "app/WindowPlacement.h"
#include "imaging/engine/ThumbnailStore.h"
#include "platform/TopLevelWindows.h"
#include "widgets/FLWidget.h"

#include <QCloseEvent>
#include <QDebug>
#include <QDir>
#include <QMenu>
#include <QStatusBar>
#include <QWindow>

#include <windows.h>

#include <utility>

namespace
{

constexpr int stoppingNote = 8000; // ms

} // namespace

void MainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (std::exchange(m_shownBefore, true))
        return;
    windowHandle()->installEventFilter(this);
    m_pages->home()->setFocus(); // instead of the toolbar, which is first
    placement::moveIntoView(*this);
    for (const Module &module : m_table.rows()) {
        if (module.atStart)
            module.atStart();
    }
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    placement::store(*this);

    if (!m_pages->mayLeaveShownPage()) {
        event->ignore();
        return;
    }
    QList<FLWidget *> pages;
    for (const Module *module : m_table.inCloseOrder()) {
        if (FLWidget *page = m_pages->page(module->id))
            pages.append(page);
    }
    const CloseCheck check = askPagesToStop(pages);
    event->setAccepted(check.mayClose);
    if (!check.mayClose)
        showStopping(check.stopping);
    // Also while a page is busy: a page that still uses thumbnails shows a missing one as an empty image.
    if (imaging::ThumbnailStore::produced()) {
        event->ignore();
        removeThumbnailsThenClose();
    }
    if (event->isAccepted())
        emit closed();
}

void MainWindow::showStopping(const QStringList &jobs)
{
    const QString text = tr("Stopping what is running. The window closes when it has ended.");
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

QMenu *MainWindow::createPopupMenu()
{
    return m_actions->makeMenu(this);
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
    tellPages(ShellEvent::ShiftUp); // for any key
    QMainWindow::keyReleaseEvent(event);
}

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::BackButton)
        m_actions->back->trigger();
    else
        QMainWindow::mousePressEvent(event);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle() && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Back ||
            QKeySequence(key->keyCombination()) == m_actions->back->shortcut()) {
            m_actions->back->trigger();
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
    case platform::messageOpenModule: {
        // Pages only: elevated programs are only started by a click of the user.
        const Module *module = m_table.find(static_cast<int>(received->wParam));
        if (module && module->kind == Module::Kind::Page)
            QMetaObject::invokeMethod(
                this, [this, id = module->id] { onOpenModule(id); }, Qt::QueuedConnection);
        break;
    }
    default:
        break;
    }
    return false;
}

// Windows may send messages during construction.
void MainWindow::tellPages(ShellEvent event, quint32 value)
{
    if (m_pages)
        m_pages->tell(event, value);
}
