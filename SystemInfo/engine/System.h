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
// The registry of Windows 11 still calls it "Windows 10": the build decides.
WindowsRelease windowsRelease(const SystemFacts &facts, core::RegistryView &registry);

// The section that the first page and the page of the operating system share.
Row operatingSystemRow(const SystemFacts &facts, const WindowsRelease &release);

// Brings what the page says about the uptime to `seconds`; the position of its row, from the section on, or
// none when nothing changed.
std::vector<int> updateUptime(Page &page, quint64 seconds);

} // namespace systeminfo
