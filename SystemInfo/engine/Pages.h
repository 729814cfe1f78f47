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

// Each function gathers one page. Before every call that may block it publishes the page as it is so far; it
// returns the complete page. Rows that could not be read are present with an empty text.
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
    const char *title; // English source text, translated by the caller
    Page (*gather)(Machine &machine, const Publish &publish);
};
const std::array<PageSource, pageCount> &pageSources();
const PageSource &pageSource(PageId id);
// The page with name and title but no rows.
Page emptyPage(PageId id);

} // namespace systeminfo
