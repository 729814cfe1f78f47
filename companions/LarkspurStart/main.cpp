// SPDX-License-Identifier: GPL-3.0-or-later

// The target of smart shortcuts: starts the program that the shortcut names with the given priority, and
// exits. Reads no settings and needs no other part of the suite.
#include "automation/engine/PriorityStart.h"
#include "platform/Handle.h"
#include "platform/Text.h"

#include <QCoreApplication>

#include <bit>
#include <shellapi.h>

using automation::priorityClass;
using automation::PriorityStart;
using platform::wide;

namespace
{

constexpr DWORD elevationRequired = 740; // ERROR_ELEVATION_REQUIRED, which older headers lack

QString tr(const char *text)
{
    return QCoreApplication::translate("LarkspurStart", text);
}

int fail(const QString &text)
{
    MessageBoxW(nullptr, wide(text), wide(tr("Smart Shortcut")), MB_OK | MB_ICONWARNING | MB_SETFOREGROUND);
    return 1;
}

// Passes on the shortcut's window state and its identity, so that the taskbar groups the program's windows
// with the pinned shortcut.
STARTUPINFOW handedOn()
{
    STARTUPINFOW own = {}, next = {};
    GetStartupInfoW(&own);
    next.cb = sizeof next;
    next.dwFlags = own.dwFlags & (STARTF_USESHOWWINDOW | STARTF_TITLEISLINKNAME | STARTF_TITLEISAPPID);
    next.wShowWindow = own.wShowWindow;
    if (next.dwFlags & (STARTF_TITLEISLINKNAME | STARTF_TITLEISAPPID))
        next.lpTitle = own.lpTitle;
    return next;
}

// Limits it to the first `count` processors that this process may use.
void limitProcessors(HANDLE process, int count)
{
    DWORD_PTR own = 0, all = 0, chosen = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &own, &all))
        return;
    for (DWORD_PTR bit = 1; bit != 0 && std::popcount(chosen) < count; bit <<= 1)
        chosen |= own & bit;
    if (chosen != 0)
        SetProcessAffinityMask(process, chosen);
}

// A program that requires administrator rights is started through the shell, so that the prompt shows the
// program's own name. Windows does not allow changing its priority, unless this process is elevated itself.
int startElevated(const PriorityStart &start, int show)
{
    SHELLEXECUTEINFOW job = {};
    job.cbSize = sizeof job;
    job.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC;
    job.lpVerb = L"runas";
    job.lpFile = wide(start.program);
    job.lpParameters = wide(start.arguments);
    job.nShow = show;
    if (!ShellExecuteExW(&job))
        return GetLastError() == ERROR_CANCELLED ? 1
                                                 : fail(tr("%1 could not be started.").arg(start.program));
    const platform::ObjectHandle process(job.hProcess);
    if (process) {
        SetPriorityClass(process.get(), priorityClass(start.priority));
        if (start.processors > 0)
            limitProcessors(process.get(), start.processors);
    }
    return 0;
}

int start(const PriorityStart &start)
{
    STARTUPINFOW startup = handedOn();
    PROCESS_INFORMATION made = {};
    QString commandLine = automation::commandLineOf(start);
    if (CreateProcessW(wide(start.program), reinterpret_cast<wchar_t *>(commandLine.data()), nullptr, nullptr,
                       FALSE, CREATE_SUSPENDED | priorityClass(start.priority), nullptr, nullptr, &startup,
                       &made)) {
        const platform::ObjectHandle process(made.hProcess), thread(made.hThread);
        SetPriorityClass(process.get(), priorityClass(start.priority)); // Wine ignores the creation flag
        if (start.processors > 0)
            limitProcessors(process.get(), start.processors);
        AllowSetForegroundWindow(made.dwProcessId);
        ResumeThread(thread.get());
        return 0;
    }
    const DWORD error = GetLastError();
    if (error == elevationRequired)
        return startElevated(start,
                             startup.dwFlags & STARTF_USESHOWWINDOW ? startup.wShowWindow : SW_SHOWNORMAL);
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND)
        return fail(
            tr("%1 is not there any more.\n\nThe page \"Smart Shortcut\" of Fernlight Larkspur can look "
               "for the program again.")
                .arg(start.program));
    return fail(
        tr("%1 could not be started.\n\n%2").arg(start.program, qt_error_string(static_cast<int>(error))));
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    const QString commandLine = platform::fromWide(GetCommandLineW());
    if (const auto wanted = automation::parseStart(automation::argumentsOf(commandLine)))
        return start(*wanted);
    return fail(
        tr("This program is started by shortcuts that the page \"Smart Shortcut\" of Fernlight Larkspur "
           "makes. What this one asks for cannot be read."));
}
