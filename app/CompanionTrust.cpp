// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CompanionTrust.h"

#include "platform/Handle.h"
#include "platform/Paths.h"

namespace
{

bool isElevated()
{
    platform::ObjectHandle token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put()))
        return false;
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    return GetTokenInformation(token.get(), TokenElevation, &elevation, sizeof(elevation), &size) &&
           elevation.TokenIsElevated != 0;
}

// Only requests the access; nothing is written. For a folder, FILE_WRITE_DATA is the right to add files.
bool mayWrite(const QString &path)
{
    const platform::FileHandle opened(CreateFileW(platform::apiPath(path).c_str(), FILE_WRITE_DATA,
                                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                                  nullptr));
    return static_cast<bool>(opened);
}

} // namespace

bool changeableByThisProcess(const QString &file, const QString &folder)
{
    return mayWrite(folder) || mayWrite(file);
}

bool changeableWithoutElevation(const QString &file, const QString &folder)
{
    return !isElevated() && changeableByThisProcess(file, folder);
}
