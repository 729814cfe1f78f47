// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/HeldFile.h"

#include <windows.h>

#include <optional>
#include <string>

// Facts about open handles, for the classes that own them. Do disk I/O; any thread.
namespace platform
{

std::optional<core::FileFacts> factsOf(HANDLE file);

// The cheap part of the facts: an identity also needs the volume, which is much slower.
struct QuickFacts {
    quint32 attributes = 0;
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
    quint32 linkCount = 1;     // hard links
};
std::optional<QuickFacts> quickFactsOf(HANDLE file);
// File id within its volume; nullopt if the file system has none.
std::optional<quint64> fileNumberOf(HANDLE file);

// Unmodified, including "\\?\"; empty if not available.
std::wstring rawFinalPath(HANDLE file, HeldFile::Form form);
DWORD finalPathFlags(HeldFile::Form form);

} // namespace platform
