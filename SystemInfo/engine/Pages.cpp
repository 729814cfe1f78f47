// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Pages.h"

namespace systeminfo
{

const std::array<PageSource, pageCount> &pageSources()
{
    static constexpr std::array<PageSource, pageCount> sources{{
        {PageId::General, SYSTEMINFO_LABEL("General"), generalPage},
        {PageId::Cpu, SYSTEMINFO_LABEL("CPU"), cpuPage},
        {PageId::Motherboard, SYSTEMINFO_LABEL("Motherboard"), motherboardPage},
        {PageId::Memory, SYSTEMINFO_LABEL("Memory"), memoryPage},
        {PageId::Storage, SYSTEMINFO_LABEL("Storage"), storagePage},
        {PageId::OperatingSystem, SYSTEMINFO_LABEL("Operating System"), operatingSystemPage},
        {PageId::EnvironmentVariables, SYSTEMINFO_LABEL("Environment Variables"), environmentPage},
        {PageId::SpecialFolders, SYSTEMINFO_LABEL("Special Folders"), specialFoldersPage},
        {PageId::StartupItems, SYSTEMINFO_LABEL("Startup Items"), startupPage},
        {PageId::TaskScheduler, SYSTEMINFO_LABEL("Task Scheduler"), tasksPage},
        {PageId::Codecs, SYSTEMINFO_LABEL("Audio & Video Codec"), codecsPage},
    }};
    return sources;
}

const PageSource &pageSource(PageId id)
{
    return pageSources()[static_cast<std::size_t>(id)];
}

Page emptyPage(PageId id)
{
    const char *title = pageSource(id).title;
    return {.name = stableName(QString::fromLatin1(title)), .title = Words::tr(title)};
}

} // namespace systeminfo
