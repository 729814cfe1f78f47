// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

#include <array>

namespace systeminfo
{

// In the order of the page buttons.
enum class PageId {
    General,
    Cpu,
    Motherboard,
    Memory,
    Storage,
    OperatingSystem,
    EnvironmentVariables,
    SpecialFolders,
    StartupItems,
    TaskScheduler,
    Codecs
};
inline constexpr int pageCount = 11;

// Each gathers one page: reads the machine, publishes the page as far as it has come before every call that
// may take long, and returns it whole. Rows that could not be read are there, with an empty text.
Page generalPage(Machine &machine, const Publish &publish);
Page cpuPage(Machine &machine, const Publish &publish);
Page motherboardPage(Machine &machine, const Publish &publish);
Page memoryPage(Machine &machine, const Publish &publish);
Page storagePage(Machine &machine, const Publish &publish);
Page operatingSystemPage(Machine &machine, const Publish &publish);
Page environmentPage(Machine &machine, const Publish &publish);
Page specialFoldersPage(Machine &machine, const Publish &publish);
Page startupPage(Machine &machine, const Publish &publish);
Page tasksPage(Machine &machine, const Publish &publish);
Page codecsPage(Machine &machine, const Publish &publish);

struct PageSource {
    PageId id;
    const char *title; // English, to be translated
    Page (*gather)(Machine &machine, const Publish &publish);
};
const std::array<PageSource, pageCount> &pageSources();
const PageSource &pageSource(PageId id);
// The page with its name and title and nothing in it.
Page emptyPage(PageId id);

} // namespace systeminfo
