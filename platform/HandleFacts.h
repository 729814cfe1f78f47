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

// The quick part of them: the identity asks for the volume as well, which costs far more.
struct SizeAndTime {
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
};
std::optional<SizeAndTime> sizeAndTimeOf(HANDLE file);

// As Windows writes it, "\\?\" included; empty when it cannot be told.
std::wstring rawFinalPath(HANDLE file, HeldFile::Form form);
DWORD finalPathFlags(HeldFile::Form form);

} // namespace platform
