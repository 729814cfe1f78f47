// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>
#include <qwindowdefs.h>

namespace platform
{

// What the program asks of the Windows shell. Interface thread only. Tests put a FakeShell in its place.
class Shell
{
public:
    virtual ~Shell() = default;

    // Opens a file or folder by its full path with its default program, as a double click would: an
    // executable runs. False when the shell refuses; it shows no box of its own. What it would take for
    // another item (see survivesWin32() in platform/Paths.h) it is not asked for, here and below.
    virtual bool openFile(const QString &path) = 0;

    // Opens the folder in Explorer with the item selected. False when Explorer could not be started.
    virtual bool revealInExplorer(const QString &path) = 0;

    // Opens the recycle bin in Explorer. False when Explorer could not be started.
    virtual bool openRecycleBin() = 0;

    // Opens an http or https address in the browser; false for any other scheme.
    virtual bool openWebPage(const QUrl &address) = 0;

    // Opens a page of Windows' settings by its name, "privacy-location".
    virtual bool openSettingsPage(const QString &page) = 0;

    // Starts a companion with administrator rights: verb "runas", empty parameters, normal window, no mask
    // flags. `file` and `folder` (the working directory) are handed over as they are. Returns when the user
    // has answered the elevation prompt and handles window messages meanwhile, so guard against being entered
    // again. There is no result: a refusal looks like a success to everybody. A missing file is not handed to
    // the shell at all, since the shell would show an error box of its own and block.
    virtual void runElevated(WId owner, const QString &file, const QString &folder) = 0;

    // Starts the background agent: verb "open", no parameters, default window or a hidden one. Silent when
    // the file is missing.
    virtual bool startAgent(const QString &file, bool hidden = false) = 0;

    // Shows on the task bar's button of this top-level window how far a job is: `done` of `total`, and with a
    // total of 0 that something goes on. Where there is no task bar, nothing happens.
    virtual void showTaskbarProgress(WId window, int done, int total) = 0;
    virtual void clearTaskbarProgress(WId window) = 0;
};

// The shell in use, the real one unless replaced.
Shell &shell();
// For tests; null puts the real one back. The object is not owned.
void setShell(Shell *replacement);

} // namespace platform
