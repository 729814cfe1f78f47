// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HeldFile.h"

#include <windows.h>

#include <optional>
#include <string>

// What an open handle tells. Disk, any thread. For the classes that hold one.
namespace platform
{

std::optional<core::FileFacts> factsOf(HANDLE file);

// As Windows writes it, "\\?\" included; empty when it cannot be told.
std::wstring rawFinalPath(HANDLE file, HeldFile::Form form);
DWORD finalPathFlags(HeldFile::Form form);

} // namespace platform
