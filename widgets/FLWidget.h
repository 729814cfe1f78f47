// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QWidget>

class JobHost;

// What the main window can tell a page.
enum class ShellEvent {
    RefreshIcons,   // value unused
    StayAwakeState, // value: the low 32 bits of the message's wParam
    ShiftDown,      // value unused
    ShiftUp,        // value unused; any released key counts
    WindowTitle,    // value unused; sent once, after construction, to the pages that ask for the title
};

// The page of a module in the main window's stack: created when it is first opened, destroyed with the main
// window. A page runs its jobs in a JobHost, its own or one of a widget below it, and has nothing to do for
// the close check: a window that is closed during a job waits for its end and closes then.
class FLWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FLWidget(QWidget *parent = nullptr) : QWidget(parent) {}
    ~FLWidget() override;

    // True while any job of the page runs.
    virtual bool isBusy() const { return !m_running.isEmpty(); }
    // The window is to close: asks every running job to stop, and returns at once. closeApp() follows when
    // the last of them has ended, unless one of them has something to say to the user (see
    // JobHost::keepOpen()).
    virtual void requestStop();
    // Asked while the page is on the screen, before another one is shown or the window closes. May put a
    // question to the user and save or drop what was edited; false keeps the page where it is.
    virtual bool mayLeave() { return true; }
    // What is being stopped, in a few words for the user; empty when nothing runs.
    virtual QString busyText() const;
    virtual void shellEvent(ShellEvent event, quint32 value)
    {
        Q_UNUSED(event)
        Q_UNUSED(value)
    }

signals:
    // The page wants the window closed.
    void closeApp();
    // False when the first job of the page begins, true when the last one has ended, however it ended.
    void showToolbarSignal(bool show);

private:
    friend class JobHost;

    void jobBegan(JobHost *job, bool byTheUser);
    void jobEnded(JobHost *job);
    void closeIfWanted();

    QList<JobHost *> m_running;
    bool m_closeWanted = false;
};
