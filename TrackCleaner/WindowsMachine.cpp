// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/WindowsMachine.h"

#include "platform/Handle.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/Text.h"

#include <array>

namespace tracks
{

namespace
{

QString windowsFolder()
{
    std::array<wchar_t, MAX_PATH> buffer;
    const UINT length = GetWindowsDirectoryW(buffer.data(), static_cast<UINT>(buffer.size()));
    return length < buffer.size() ? platform::fromWide(buffer.data(), length) : QString();
}

// Expanded to long names for the guard's comparison: the temporary folder is often given as
// "C:\Users\ANNAMA~1\...".
QString temporaryFolder()
{
    std::wstring path(MAX_PATH + 1, L'\0');
    path.resize(GetTempPathW(static_cast<DWORD>(path.size()), path.data()));
    std::wstring longPath(path.size() + 1, L'\0');
    DWORD length = GetLongPathNameW(path.c_str(), longPath.data(), static_cast<DWORD>(longPath.size()));
    if (length > longPath.size()) {
        longPath.resize(length);
        length = GetLongPathNameW(path.c_str(), longPath.data(), length);
    }
    // The call fails for a folder that does not exist, which has no files anyway.
    QString folder = length > 0 ? platform::fromWide(longPath.data(), length) : QString::fromStdWString(path);
    while (folder.endsWith(u'\\'))
        folder.chop(1);
    return folder;
}

Outcome outcomeOf(platform::Guarded guarded)
{
    using platform::Guarded;
    switch (guarded) {
    case Guarded::Done:
        return Outcome::Removed;
    case Guarded::Vanished:
        return Outcome::Vanished;
    case Guarded::Changed:
        return Outcome::Changed;
    case Guarded::ThroughLink:
        return Outcome::ThroughLink;
    case Guarded::ReadOnly:
        return Outcome::ReadOnly;
    case Guarded::InUse:
        return Outcome::InUse;
    case Guarded::Denied:
        return Outcome::Denied;
    default:
        return Outcome::Failed;
    }
}

} // namespace

Locations windowsLocations()
{
    Locations locations;
    locations.profile = platform::knownFolder(platform::KnownFolder::Profile);
    locations.windows = windowsFolder();
    locations.programData = platform::knownFolder(platform::KnownFolder::ProgramData);
    locations.temporary = temporaryFolder();
    locations.temporaryTarget = platform::finalPath(locations.temporary);
    // finalPath() returns nothing for a folder that does not exist.
    if (locations.temporaryTarget.isEmpty())
        locations.temporaryTarget = locations.temporary;
    return locations;
}

quint64 currentFileTime()
{
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return quint64{now.dwHighDateTime} << 32 | now.dwLowDateTime;
}

bool WindowsRights::mayRemove(const QString &file)
{
    const platform::FileHandle opened(CreateFileW(
        platform::apiPath(file).c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return opened || GetLastError() != ERROR_ACCESS_DENIED;
}

Outcome GuardedRemover::remove(const FileToRemove &file)
{
    return outcomeOf(m_erasure.erase({.root = file.root,
                                      .path = file.path,
                                      .size = file.size,
                                      .lastWriteTime = file.lastWriteTime,
                                      .identity = std::nullopt}));
}

} // namespace tracks
