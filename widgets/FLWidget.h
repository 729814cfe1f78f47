// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// What the main window can tell a page.
enum class ShellEvent {
    RefreshIcons,   // value unused
    StayAwakeState, // value: the low 32 bits of the message's wParam
    ShiftDown,      // value unused
    ShiftUp,        // value unused; any released key counts
    WindowTitle,    // value unused; sent once, after construction, to the pages that ask for the title
};

// The page of a module in the main window's stack: created when it is first opened, destroyed with the main
// window. A page with a running job says so and is asked to stop before the window closes; its destructor
// ends the job in any case.
class FLWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FLWidget(QWidget *parent = nullptr) : QWidget(parent) {}

    // True while any job of the page runs.
    virtual bool isBusy() const { return false; }
    // Asks every running job to stop; returns at once.
    virtual void requestStop() {}
    // Asked while the page is on the screen, before another one is shown or the window closes. May put a
    // question to the user and save or drop what was edited; false keeps the page where it is.
    virtual bool mayLeave() { return true; }
    // What is being stopped, in a few words for the user; empty when nothing runs.
    virtual QString busyText() const { return {}; }
    virtual void shellEvent(ShellEvent event, quint32 value)
    {
        Q_UNUSED(event)
        Q_UNUSED(value)
    }

signals:
    // The page wants the window closed.
    void closeApp();
    // False when a job that must not be walked away from begins, true at every way in which it can end.
    void showToolbarSignal(bool show);
};
