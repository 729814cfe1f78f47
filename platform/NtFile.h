// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Guard.h"

#include <windows.h>
#include <winternl.h>

// Native system calls needed by the guard: opening and renaming relative to an open folder, whereas Win32
// only accepts paths.
namespace platform
{

// `name` is one component in the folder, or ":stream:$DATA" of an open file. `options` decides whether a link
// is followed.
NTSTATUS openAt(HANDLE folder, QStringView name, ACCESS_MASK access, ULONG share, ULONG options,
                FileHandle &file);
// Within `folder`; never replaces an existing item.
NTSTATUS renameAt(HANDLE file, HANDLE folder, QStringView name);
// The file is deleted when its last handle is closed.
NTSTATUS markForRemoval(HANDLE file);

// 0 if it cannot be read.
DWORD reparseTagOf(HANDLE file);
// True for junctions, mount points and symbolic links, not for cloud or deduplication tags. Wine reports
// symbolic links with tag 0.
bool isLinkTag(DWORD tag);

// Maps an error to its meaning for the user.
Guarded guardedStatus(NTSTATUS status);
Guarded guardedError(DWORD error);

} // namespace platform
