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

BOOL CALLBACK noteProgram(HWND window, LPARAM into)
{
    if (!IsWindowVisible(window) || GetWindowTextLengthW(window) == 0)
        return TRUE;
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const ObjectHandle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    std::array<wchar_t, 32768> path{};
    auto length = static_cast<DWORD>(path.size());
    if (process && id != GetCurrentProcessId() &&
        QueryFullProcessImageNameW(process.get(), 0, path.data(), &length)) {
        const QString whole = fromWide(path.data(), length);
        reinterpret_cast<QSet<QString> *>(into)->insert(whole.mid(whole.lastIndexOf(u'\\') + 1));
    }
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
    const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    DWORD session = 0, other = 0;
    ProcessIdToSessionId(GetCurrentProcessId(), &session);
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry)) {
        if (fromWide(entry.szExeFile).compare(fileName, Qt::CaseInsensitive) != 0 ||
            !ProcessIdToSessionId(entry.th32ProcessID, &other) || other != session)
            continue;
        ObjectHandle process(OpenProcess(SYNCHRONIZE, FALSE, entry.th32ProcessID));
        if (process && WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT)
            return process;
    }
    return {};
}

} // namespace platform
