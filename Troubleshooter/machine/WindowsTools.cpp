// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/machine/WindowsTools.h"

#include "platform/Com.h"
#include "platform/KnownFolders.h"
#include "platform/NewFile.h"
#include "platform/Paths.h"
#include "platform/Text.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <shellapi.h>

namespace repair
{

namespace
{

constexpr int poll = 100; // ms

struct ToolRow {
    const char *program; // in the system folder
    QStringList arguments;
    bool elevated = false;
    bool window = false; // the tool shows its own window and requests elevation itself
    int seconds = 60;    // time limit
};

ToolRow rowOf(Tool tool, const QString &file)
{
    const auto words = [](const char *text) { return QString::fromLatin1(text).split(u' '); };
    switch (tool) {
    case Tool::FlushDns:
        return {"ipconfig.exe", words("/flushdns")};
    case Tool::RenewAddresses:
        return {"ipconfig.exe", words("/renew"), true, false, 120};
    case Tool::SaveSockets:
        return {"reg.exe",
                {QStringLiteral("export"),
                 QStringLiteral("HKLM\\SYSTEM\\CurrentControlSet\\Services\\WinSock2\\Parameters"), file}};
    case Tool::ResetSockets:
        return {"netsh.exe", words("winsock reset"), true};
    case Tool::SaveAddresses:
        return {"netsh.exe", words("interface dump")};
    case Tool::ResetAddresses:
        return {"netsh.exe", words("int ip reset"), true};
    case Tool::ResetStore:
        break;
    }
    return {"wsreset.exe", {}, false, true, 180};
}

// `ended(ms)` waits up to that time and returns whether the process has ended.
template <class Ended>
ToolRun::State await(int seconds, const core::CancelFlag &cancel, Ended ended)
{
    for (const QDeadlineTimer end(seconds * 1000); !ended(poll);) {
        if (cancel.isSet())
            return ToolRun::State::Cancelled;
        if (end.hasExpired())
            return ToolRun::State::TookTooLong;
    }
    return ToolRun::State::Ended;
}

ToolRun runHidden(const ToolRow &row, const QString &program, const core::CancelFlag &cancel)
{
    ToolRun run;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, row.arguments);
    if (!process.waitForStarted())
        return run;
    process.closeWriteChannel();
    run.state = await(row.seconds, cancel, [&](int ms) {
        return process.waitForFinished(ms) || process.state() == QProcess::NotRunning;
    });
    if (run.state != ToolRun::State::Ended) {
        process.kill();
        process.waitForFinished();
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.output = process.readAll();
    return run;
}

// The owner window for the elevation prompt: without one Windows may open the prompt in the background.
HWND ownWindow()
{
    const HWND window = GetForegroundWindow();
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId() ? window : nullptr;
}

ToolRun runByShell(const ToolRow &row, const QString &program, const core::CancelFlag &cancel)
{
    const platform::ComScope com;
    const QString parameters = row.arguments.join(u' '); // single words without blanks
    SHELLEXECUTEINFOW job = {};
    job.cbSize = sizeof job;
    job.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    job.hwnd = ownWindow();
    job.lpVerb = row.elevated ? L"runas" : L"open";
    job.lpFile = platform::wide(program);
    job.lpParameters = platform::wide(parameters);
    job.nShow = row.window ? SW_SHOWNORMAL : SW_HIDE;
    ToolRun run;
    if (!ShellExecuteExW(&job)) {
        if (GetLastError() == ERROR_CANCELLED)
            run.state = ToolRun::State::Refused;
        return run;
    }
    const platform::ObjectHandle process(job.hProcess);
    if (!process) // no process handle: its end cannot be observed
        return run;
    run.state = await(row.seconds, cancel, [&](int ms) {
        return WaitForSingleObject(process.get(), static_cast<DWORD>(ms)) == WAIT_OBJECT_0;
    });
    DWORD code = 0;
    run.exitCode = GetExitCodeProcess(process.get(), &code) ? static_cast<int>(code) : -1;
    return run;
}

} // namespace

ToolRun WindowsTools::run(Tool tool, const QString &file, const core::CancelFlag &cancel)
{
    const ToolRow row = rowOf(tool, file);
    const QString program =
        platform::knownFolder(platform::KnownFolder::System) + u'\\' + QString::fromLatin1(row.program);
    if (!platform::fileExists(program))
        return {};
    if (!file.isEmpty())
        QDir().mkpath(QFileInfo(file).path());
    return row.elevated || row.window ? runByShell(row, program, cancel) : runHidden(row, program, cancel);
}

QString WindowsTools::restoreFolder()
{
    const QString documents = platform::knownFolder(platform::KnownFolder::Documents);
    return documents.isEmpty() ? QString() : documents + QStringLiteral("\\Fernlight Larkspur");
}

bool WindowsTools::save(const QString &path, const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return false;
    QDir().mkpath(QFileInfo(path).path());
    platform::NewFile file(path);
    QString problem;
    return file.write(bytes) && file.place(false, problem) == platform::NewFile::Placed::Done;
}

bool WindowsTools::holdsSomething(const QString &path)
{
    const auto facts = platform::fileFacts(path);
    return facts && facts->size > 0;
}

} // namespace repair
