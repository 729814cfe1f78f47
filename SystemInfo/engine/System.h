// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

namespace systeminfo
{

struct WindowsRelease {
    QString name;    // "Windows 11"
    QString edition; // "Pro"
    QString version; // "10.0 (23H2)"
    QString build;   // "22631.3007"
};
// The registry of Windows 11 still says "Windows 10", so the build number decides.
WindowsRelease windowsRelease(const SystemFacts &facts, core::RegistryView &registry);

// The section shared by the first page and the operating system page.
Row operatingSystemRow(const SystemFacts &facts, const WindowsRelease &release);

// Sets the page's uptime to `seconds` and returns the position path of its row; empty if nothing changed.
std::vector<int> updateUptime(Page &page, quint64 seconds);

} // namespace systeminfo
