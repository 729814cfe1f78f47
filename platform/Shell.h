// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>
#include <qwindowdefs.h>

namespace platform
{

// The Windows shell functions that the program uses. Interface thread only. Tests install a FakeShell.
class Shell
{
public:
    virtual ~Shell() = default;

    // Opens a file or folder by full path with its default program, as a double click does: executables are
    // run. False if the shell fails; no error box is shown. Here and below, paths that the shell would
    // interpret as another item (see survivesWin32() in platform/Paths.h) are rejected.
    virtual bool openFile(const QString &path) = 0;

    // Opens the folder in Explorer with the item selected. False if Explorer could not be started.
    virtual bool revealInExplorer(const QString &path) = 0;

    // Opens the recycle bin in Explorer. False if Explorer could not be started.
    virtual bool openRecycleBin() = 0;

    // Opens an http or https address in the browser; false for any other scheme.
    virtual bool openWebPage(const QUrl &address) = 0;

    // Opens a page of Windows Settings by name, "privacy-location".
    virtual bool openSettingsPage(const QString &page) = 0;

    // Starts a companion with administrator rights: verb "runas", no parameters, normal window, no mask
    // flags. `file` and `folder` (the working directory) are passed on unchanged. Returns when the user has
    // answered the elevation prompt and processes window messages meanwhile, so protect against reentrancy.
    // There is no result: a refusal looks like a success. A missing file is not passed to the shell, which
    // would show a blocking error box.
    virtual void runElevated(WId owner, const QString &file, const QString &folder) = 0;

    // Starts the background agent: verb "open", no parameters, default or hidden window. Does nothing if the
    // file is missing.
    virtual bool startAgent(const QString &file, bool hidden = false) = 0;

    // Shows progress on the taskbar button of this top-level window: `done` of `total`, or an indeterminate
    // bar if total is 0. Does nothing without a taskbar.
    virtual void showTaskbarProgress(WId window, int done, int total) = 0;
    virtual void clearTaskbarProgress(WId window) = 0;
};

// The shell in use; the real one unless replaced.
Shell &shell();
// For tests; null restores the real implementation. The object is not owned.
void setShell(Shell *replacement);

} // namespace platform
