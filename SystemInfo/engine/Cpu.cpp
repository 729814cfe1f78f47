// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Cpu.h"

#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/WmiNotice.h"

#include <algorithm>

namespace systeminfo
{

namespace
{

constexpr quint64 unitStep = 1024;

core::WmiQuery processorQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_Processor"),
            .properties = {QStringLiteral("Name"), QStringLiteral("Description"),
                           QStringLiteral("ProcessorId"), QStringLiteral("MaxClockSpeed"),
                           QStringLiteral("L2CacheSize"), QStringLiteral("L3CacheSize"),
                           QStringLiteral("NumberOfCores"), QStringLiteral("ThreadCount"),
                           QStringLiteral("SocketDesignation"), QStringLiteral("Manufacturer"),
                           QStringLiteral("DataWidth"), QStringLiteral("VirtualizationFirmwareEnabled"),
                           QStringLiteral("VMMonitorModeExtensions")}};
}

// Level 3 means L1 here: WMI's enumeration starts with "other" and "unknown".
core::WmiQuery cacheQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_CacheMemory WHERE Level = 3"),
            .properties = {QStringLiteral("MaxCacheSize")}};
}

void takeText(QString &target, const core::WmiRow &row, const QString &property)
{
    if (row.has(property))
        target = row.text(property);
}

template <class Format>
void takeNumber(Value &target, const core::WmiRow &row, const QString &property, Format format)
{
    if (const auto number = row.unsignedInteger(property))
        target = format(*number);
}

void takeFlag(Value &target, const core::WmiRow &row, const QString &property, const QString &on,
              const QString &off)
{
    if (const auto flag = row.flag(property))
        target = Value(*flag ? on : off);
}

void readCounts(CpuFacts &facts, const core::WmiRow &row)
{
    const auto cores = row.unsignedInteger(QStringLiteral("NumberOfCores"));
    const auto threads = row.unsignedInteger(QStringLiteral("ThreadCount"));
    if (cores)
        facts.cores = decimal(cores);
    if (cores || threads)
        facts.threads = decimal(std::max(threads.value_or(0), facts.cores.number.toULongLong()));
}

Row virtualizationRow(const CpuFacts &facts)
{
    Row row = fact(SYSTEMINFO_LABEL("Virtualization"), facts.virtualization);
    row.hint =
        Words::tr("While a hypervisor runs, Windows may report this as disabled although it is in use.");
    return row;
}

Page assemble(const CpuFacts &facts)
{
    Page page = emptyPage(PageId::Cpu);
    Row top = section(SYSTEMINFO_LABEL("CPU"), QStringLiteral("SysInfoCPU16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Model"), facts.name));
    top.add(fact(SYSTEMINFO_LABEL("Family"), facts.description));
    top.add(fact(SYSTEMINFO_LABEL("Manufacturer"), facts.manufacturer));
    top.add(fact(SYSTEMINFO_LABEL("SocketDescription"), facts.socket));
    top.add(fact(SYSTEMINFO_LABEL("Architecture"), facts.dataWidth));
    top.add(fact(SYSTEMINFO_LABEL("Speed"), facts.speed));
    top.add(fact(SYSTEMINFO_LABEL("L1 Cache"), facts.l1Cache));
    top.add(fact(SYSTEMINFO_LABEL("L2 Cache"), facts.l2Cache));
    top.add(fact(SYSTEMINFO_LABEL("L3 Cache"), facts.l3Cache));
    top.add(fact(SYSTEMINFO_LABEL("Cores"), facts.cores));
    top.add(fact(SYSTEMINFO_LABEL("Threads"), facts.threads));
    top.add(virtualizationRow(facts));
    top.add(fact(SYSTEMINFO_LABEL("Virtual Machine Monitor Extensions"), facts.monitorExtensions));
    top.add(fact(SYSTEMINFO_LABEL("Unique ID"), facts.uniqueId, Privacy::Serial));
    page.sections.push_back(std::move(top));

    // With a single processor, this would only repeat the rows above.
    if (facts.processors.size() > 1) {
        Row all = section(SYSTEMINFO_LABEL("Processors"), QStringLiteral("SysInfoCPU16.png"));
        for (std::size_t i = 0; i < facts.processors.size(); ++i)
            all.add(numbered(SYSTEMINFO_LABEL("Processor #"), qsizetype(i), facts.processors[i]));
        page.sections.push_back(std::move(all));
    }
    return page;
}

} // namespace

Value secondLevelCache(quint64 kilobytes)
{
    return kilobytes <= unitStep ? decimal(kilobytes, QStringLiteral(" KB"))
                                 : decimal(kilobytes / unitStep, QStringLiteral(" MB"));
}

Value thirdLevelCache(quint64 kilobytes)
{
    return decimal(kilobytes > unitStep ? kilobytes / unitStep : kilobytes, QStringLiteral(" MB"));
}

void readProcessor(CpuFacts &facts, const core::WmiRow &row)
{
    takeText(facts.name, row, QStringLiteral("Name"));
    takeText(facts.description, row, QStringLiteral("Description"));
    takeText(facts.uniqueId, row, QStringLiteral("ProcessorId"));
    takeText(facts.socket, row, QStringLiteral("SocketDesignation"));
    takeText(facts.manufacturer, row, QStringLiteral("Manufacturer"));
    takeNumber(facts.dataWidth, row, QStringLiteral("DataWidth"),
               [](quint64 bits) { return decimal(bits, QStringLiteral("-bit")); });
    // Divided by 1024 by design, whereas the first page divides by 1000.
    takeNumber(facts.speed, row, QStringLiteral("MaxClockSpeed"), [](quint64 megahertz) {
        return Value::of(static_cast<double>(static_cast<float>(megahertz) * (1.0f / 1024.0f)),
                         QStringLiteral("GHz"));
    });
    takeNumber(facts.l2Cache, row, QStringLiteral("L2CacheSize"), secondLevelCache);
    takeNumber(facts.l3Cache, row, QStringLiteral("L3CacheSize"), thirdLevelCache);
    readCounts(facts, row);
    takeFlag(facts.virtualization, row, QStringLiteral("VirtualizationFirmwareEnabled"), Words::tr("Active"),
             Words::tr("Disabled"));
    takeFlag(facts.monitorExtensions, row, QStringLiteral("VMMonitorModeExtensions"), Words::tr("Supported"),
             Words::tr("Not supported"));
    facts.processors.push_back(row.text(QStringLiteral("Name")));
}

Page cpuPage(Machine &machine, const Publish &publish)
{
    CpuFacts facts;
    Page asked;
    publish(assemble(facts));
    ask(machine, asked, processorQuery(), Words::tr("the processor"),
        [&facts](const core::WmiRow &row) { readProcessor(facts, row); });
    publish(assemble(facts));
    bool first = true;
    ask(machine, asked, cacheQuery(), Words::tr("the first-level cache"), [&](const core::WmiRow &row) {
        if (std::exchange(first, false))
            takeNumber(facts.l1Cache, row, QStringLiteral("MaxCacheSize"), secondLevelCache);
    });
    Page page = assemble(facts);
    page.notices = asked.notices;
    return page;
}

} // namespace systeminfo
