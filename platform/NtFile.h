// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

#include <windows.h>
#include <winternl.h>

// The calls of the system below the documented Win32 ones that the guard needs: opening and renaming by a
// name in a folder that is held, where Win32 knows paths only.
namespace platform
{

// `name` is one component of the folder, or ":stream:$DATA" of a held file. No link is followed when the
// options say so.
NTSTATUS openAt(HANDLE folder, QStringView name, ACCESS_MASK access, ULONG share, ULONG options,
                FileHandle &file);
// Within `folder`; an item that has the name already is not replaced.
NTSTATUS renameAt(HANDLE file, HANDLE folder, QStringView name);
// It goes when its last handle is closed.
NTSTATUS markForRemoval(HANDLE file);

// 0 when it cannot be told.
DWORD reparseTagOf(HANDLE file);
// A junction, mount point or symbolic link, and not a cloud or deduplication tag. Tag 0 is how Wine shows a
// symbolic link.
bool isLinkTag(DWORD tag);

// What a failure means for the user.
Guarded guardedStatus(NTSTATUS status);
Guarded guardedError(DWORD error);

} // namespace platform
