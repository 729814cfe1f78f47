// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Programs.h"

#include "platform/Text.h"

#include <QSet>

#include <array>
#include <tlhelp32.h>

namespace platform
{

namespace
{

QString imagePath(HANDLE process)
{
    std::array<wchar_t, 32768> path{};
    auto length = static_cast<DWORD>(path.size());
    return QueryFullProcessImageNameW(process, 0, path.data(), &length) ? fromWide(path.data(), length)
                                                                        : QString();
}

template <class Visit>
void forEachOfSession(Visit visit)
{
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    DWORD session = 0, other = 0;
    ProcessIdToSessionId(GetCurrentProcessId(), &session);
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry)) {
        if (ProcessIdToSessionId(entry.th32ProcessID, &other) && other == session)
            visit(entry);
    }
}

BOOL CALLBACK noteProgram(HWND window, LPARAM into)
{
    if (!IsWindowVisible(window) || GetWindowTextLengthW(window) == 0)
        return TRUE;
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const ObjectHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    const QString path = process ? imagePath(process.get()) : QString();
    if (!path.isEmpty() && id != GetCurrentProcessId())
        reinterpret_cast<QSet<QString> *>(into)->insert(path.mid(path.lastIndexOf(u'\\') + 1));
    return TRUE;
}

} // namespace

QStringList programsWithWindows()
{
    QSet<QString> names;
    EnumWindows(noteProgram, reinterpret_cast<LPARAM>(&names));
    QStringList sorted(names.begin(), names.end());
    sorted.sort(Qt::CaseInsensitive);
    return sorted;
}

ObjectHandle openProgram(const QString &fileName)
{
    ObjectHandle found;
    forEachOfSession([&](const PROCESSENTRY32W &entry) {
        if (found || fromWide(entry.szExeFile).compare(fileName, Qt::CaseInsensitive) != 0)
            return;
        ObjectHandle process(OpenProcess(SYNCHRONIZE, FALSE, entry.th32ProcessID));
        if (process && WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT)
            found = std::move(process);
    });
    return found;
}

QList<RunningProgram> runningFrom(const QString &path)
{
    const QString fileName = path.mid(path.lastIndexOf(u'\\') + 1);
    QList<RunningProgram> found;
    forEachOfSession([&](const PROCESSENTRY32W &entry) {
        if (fromWide(entry.szExeFile).compare(fileName, Qt::CaseInsensitive) != 0)
            return;
        const ObjectHandle process(
            OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, entry.th32ProcessID));
        FILETIME created = {}, exited = {}, kernel = {}, user = {};
        if (!process || imagePath(process.get()).compare(path, Qt::CaseInsensitive) != 0 ||
            !GetProcessTimes(process.get(), &created, &exited, &kernel, &user))
            return;
        const quint64 started = quint64(created.dwHighDateTime) << 32 | created.dwLowDateTime;
        found.append({entry.th32ProcessID, started, GetPriorityClass(process.get())});
    });
    return found;
}

} // namespace platform
