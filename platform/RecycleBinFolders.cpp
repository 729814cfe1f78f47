// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RecycleBinFolders.h"

#include "platform/Drives.h"
#include "platform/Handle.h"
#include "platform/Paths.h"
#include "platform/Text.h"

#include <sddl.h>

#include <cstddef>
#include <vector>

namespace platform
{

QString userSid()
{
    ObjectHandle token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put()))
        return {};
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    std::vector<std::max_align_t> buffer(size / sizeof(std::max_align_t) + 1);
    if (!GetTokenInformation(token.get(), TokenUser, buffer.data(), size, &size))
        return {};
    LPWSTR text = nullptr;
    if (!ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER *>(buffer.data())->User.Sid, &text))
        return {};
    const LocalMem owner(text);
    return fromWide(text);
}

QStringList recycleBinFolders()
{
    QStringList folders;
    const QString sid = userSid();
    for (const QString &root : driveRoots()) {
        if (sid.isEmpty() || GetDriveTypeW(wide(root)) != DRIVE_FIXED)
            continue;
        const QString folder = root + QStringLiteral("$RECYCLE.BIN\\") + sid;
        if (fileExists(folder))
            folders.append(folder);
    }
    return folders;
}

// Missing in the headers of mingw-w64.
void refreshRecycleBinIcon()
{
    const HMODULE shell = GetModuleHandleW(L"shell32");
    using Update = void(WINAPI *)();
    const auto update = shell ? reinterpret_cast<Update>(
                                    reinterpret_cast<void *>(GetProcAddress(shell, "SHUpdateRecycleBinIcon")))
                              : nullptr;
    if (update)
        update();
}

} // namespace platform
