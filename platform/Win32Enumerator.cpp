// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Win32Enumerator.h"

#include "platform/Handle.h"
#include "platform/Paths.h"

#include <QStringView>

namespace platform
{

namespace
{

quint64 wholeTime(const FILETIME &time)
{
    return quint64{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

bool isSelfOrParent(QStringView name)
{
    return name == u"." || name == u"..";
}

core::DirectoryEntry entryOf(const WIN32_FIND_DATAW &found)
{
    core::DirectoryEntry entry;
    entry.name = QStringView(found.cFileName);
    entry.attributes = found.dwFileAttributes;
    entry.reparseTag = found.dwReserved0;
    entry.size = quint64{found.nFileSizeHigh} << 32 | found.nFileSizeLow;
    entry.creationTime = wholeTime(found.ftCreationTime);
    entry.lastAccessTime = wholeTime(found.ftLastAccessTime);
    entry.lastWriteTime = wholeTime(found.ftLastWriteTime);
    return entry;
}

} // namespace

void Win32Enumerator::list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &cancel)
{
    out.clear();
    if (folder.isEmpty())
        return; // the pattern would be "\*", the root of the current drive
    std::wstring pattern = apiPath(folder);
    pattern += pattern.ends_with(L'\\') ? L"*" : L"\\*";

    const InterruptibleCalls::Call call(m_calls);
    WIN32_FIND_DATAW found;
    const FindHandle search(FindFirstFileW(pattern.c_str(), &found));
    // The root of an empty drive has no "." entry and answers "file not found": readable, and empty.
    out.readable = search || GetLastError() == ERROR_FILE_NOT_FOUND;
    if (!search)
        return;
    do {
        const core::DirectoryEntry entry = entryOf(found);
        if (!isSelfOrParent(entry.name))
            out.add(entry);
        if (cancel.isSet())
            return;
    } while (FindNextFileW(search.get(), &found));
    // A lost share or a bad sector: keep the entries read so far.
    out.brokenOff = GetLastError() != ERROR_NO_MORE_FILES && !cancel.isSet();
}

std::optional<core::FileIdentity> Win32Enumerator::identity(const QString &path)
{
    const InterruptibleCalls::Call call(m_calls);
    const std::optional<FileFacts> facts = fileFacts(path);
    if (!facts)
        return std::nullopt;
    return facts->identity;
}

void listItem(const QString &path, core::DirectoryListing &out)
{
    out.clear();
    const std::wstring name = apiPath(path);
    // The verbatim prefix contains a question mark; any other one would be a wildcard.
    if (isDriveRoot(path) || name.find_first_of(L"*?", 4) != std::wstring::npos)
        return;
    WIN32_FIND_DATAW found;
    const FindHandle search(FindFirstFileW(name.c_str(), &found));
    out.readable = static_cast<bool>(search);
    if (search)
        out.add(entryOf(found));
}

} // namespace platform
