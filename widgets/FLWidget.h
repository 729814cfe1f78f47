// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QWidget>

class JobHost;

// Notifications from the main window to a page.
enum class ShellEvent {
    RefreshIcons,   // value unused
    StayAwakeState, // value: the low 32 bits of the message's wParam
    ShiftDown,      // value unused
    ShiftUp,        // value unused; any released key counts
    WindowTitle,    // value unused; sent once after construction, to pages that registered for the title
};

// The page of a module in the main window: created when first opened, destroyed with the window. A page runs
// its jobs in a JobHost, its own or that of a child widget, and needs no code for closing: a window that is
// closed during a job waits for its end and then closes.
class FLWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FLWidget(QWidget *parent = nullptr) : QWidget(parent) {}
    ~FLWidget() override;

    // True while any job of the page is running.
    virtual bool isBusy() const { return !m_running.isEmpty(); }
    // The window is about to close: asks all running jobs to stop, and returns at once. closeApp() is emitted
    // when the last one has ended, unless a job has something to show to the user (see JobHost::keepOpen()).
    virtual void requestStop();
    // Called while the page is visible, before another page is shown or the window closes. May ask the user
    // and save or discard edits; return false to stay.
    virtual bool mayLeave() { return true; }
    // What is being stopped, in a few words for the user; empty if nothing is running.
    virtual QString busyText() const;
    virtual void shellEvent(ShellEvent event, quint32 value)
    {
        Q_UNUSED(event)
        Q_UNUSED(value)
    }

signals:
    // Asks for the window to be closed.
    void closeApp();
    // False when the first job of the page starts, true when the last one has ended in any way.
    void showToolbarSignal(bool show);

private:
    friend class JobHost;

    void jobBegan(JobHost *job, bool byTheUser);
    void jobEnded(JobHost *job);
    void closeIfWanted();

    QList<JobHost *> m_running;
    bool m_closeWanted = false;
};
