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

// The quick part of them: an identity asks for the volume as well, which costs far more.
struct QuickFacts {
    quint32 attributes = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
    quint32 linkCount = 1;     // hard links
};
std::optional<QuickFacts> quickFactsOf(HANDLE file);
// Within its volume; empty where the file system gives none.
std::optional<quint64> fileNumberOf(HANDLE file);

// As Windows writes it, "\\?\" included; empty when it cannot be told.
std::wstring rawFinalPath(HANDLE file, HeldFile::Form form);
DWORD finalPathFlags(HeldFile::Form form);

} // namespace platform
