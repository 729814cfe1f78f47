// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Memory.h"

#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/WmiNotice.h"

namespace systeminfo
{

namespace
{

core::WmiQuery moduleQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_PhysicalMemory"),
            .properties = {QStringLiteral("DeviceLocator"), QStringLiteral("MemoryType"),
                           QStringLiteral("PartNumber"), QStringLiteral("SerialNumber"),
                           QStringLiteral("Speed"), QStringLiteral("Capacity"),
                           QStringLiteral("Manufacturer"), QStringLiteral("SMBIOSMemoryType"),
                           QStringLiteral("ConfiguredClockSpeed"), QStringLiteral("ConfiguredVoltage"),
                           QStringLiteral("FormFactor"), QStringLiteral("BankLabel"),
                           QStringLiteral("DataWidth"), QStringLiteral("TotalWidth")}};
}

Value moduleCapacity(const core::WmiRow &module)
{
    const auto bytes = module.unsignedInteger(QStringLiteral("Capacity"));
    return bytes ? gigabytes(wholeGigabytes(*bytes)) : Value();
}

Row slotRow(const core::WmiRow &module)
{
    Row slot = fact(SYSTEMINFO_LABEL("RAM Slot"), module.text(QStringLiteral("DeviceLocator")));
    const auto type = module.integer(QStringLiteral("MemoryType"));
    slot.add(fact(SYSTEMINFO_LABEL("Type"), type ? Value(memoryTypeText(*type)) : Value()));
    slot.add(fact(SYSTEMINFO_LABEL("Part Number"), module.text(QStringLiteral("PartNumber"))));
    slot.add(fact(SYSTEMINFO_LABEL("Serial Number"), module.text(QStringLiteral("SerialNumber")),
                  Privacy::Serial));
    slot.add(fact(SYSTEMINFO_LABEL("Speed"),
                  decimal(module.unsignedInteger(QStringLiteral("Speed")), QStringLiteral(" MHz"))));
    slot.add(fact(SYSTEMINFO_LABEL("Capacity"), moduleCapacity(module)));
    slot.add(
        fact(SYSTEMINFO_LABEL("Manufacturer"), memoryMaker(module.text(QStringLiteral("Manufacturer")))));
    return slot;
}

Row totalsRow(const MemoryStatus &status)
{
    const quint64 total = startedGigabytes(status.totalPhysical);
    const quint64 available = startedGigabytes(status.availablePhysical);
    const bool read = status.totalPhysical > 0;
    const auto size = [read](quint64 count) { return read ? gigabytes(count) : Value(); };
    Row top = section(SYSTEMINFO_LABEL("Memory"), QStringLiteral("SysInfoMemory16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Total Amount of RAM"), size(total)));
    top.add(fact(SYSTEMINFO_LABEL("Amount of RAM Used"), size(total - qMin(total, available))));
    top.add(fact(SYSTEMINFO_LABEL("Amount of Free RAM"), size(available)));
    top.add(fact(SYSTEMINFO_LABEL("Total Amount of Virtual Memory"),
                 size(startedGigabytes(status.totalPageFile))));
    top.add(fact(SYSTEMINFO_LABEL("Amount of Free Virtual Memory"),
                 size(startedGigabytes(status.availablePageFile))));
    return top;
}

QString formFactor(std::optional<quint64> number)
{
    switch (number.value_or(0)) {
    case 8:
        return QStringLiteral("DIMM");
    case 12:
        return QStringLiteral("SO-DIMM");
    case 13:
        return QStringLiteral("SRIMM");
    default:
        return {};
    }
}

// ECC memory has a wider total width than data width.
Value errorCorrection(const core::WmiRow &module)
{
    const auto total = module.unsignedInteger(QStringLiteral("TotalWidth"));
    const auto data = module.unsignedInteger(QStringLiteral("DataWidth"));
    return total && data && *data > 0 ? Value::yesNo(*total > *data) : Value();
}

Row moreRow(const core::WmiRow &module)
{
    const auto millivolts = module.unsignedInteger(QStringLiteral("ConfiguredVoltage"));
    Row slot = fact(SYSTEMINFO_LABEL("RAM Slot"), module.text(QStringLiteral("DeviceLocator")));
    slot.add(
        fact(SYSTEMINFO_LABEL("Type Reported by the Firmware"),
             firmwareMemoryType(module.unsignedInteger(QStringLiteral("SMBIOSMemoryType")).value_or(0))));
    slot.add(fact(SYSTEMINFO_LABEL("Form Factor"),
                  formFactor(module.unsignedInteger(QStringLiteral("FormFactor")))));
    slot.add(fact(SYSTEMINFO_LABEL("Bank"), module.text(QStringLiteral("BankLabel"))));
    slot.add(fact(
        SYSTEMINFO_LABEL("Running Speed"),
        decimal(module.unsignedInteger(QStringLiteral("ConfiguredClockSpeed")), QStringLiteral(" MHz"))));
    slot.add(fact(SYSTEMINFO_LABEL("Voltage"),
                  millivolts.value_or(0) > 0
                      ? Value::of(static_cast<double>(*millivolts) / 1000, QStringLiteral("V"))
                      : Value()));
    slot.add(fact(SYSTEMINFO_LABEL("Error Correction"), errorCorrection(module)));
    return slot;
}

} // namespace

QString memoryTypeText(qint64 type)
{
    static constexpr const char *texts[] = {"Unknown",    nullptr,  "DRAM",         "Synchronous DRAM",
                                            "Cache DRAM", "EDO",    "EDRAM",        "VRAM",
                                            "SRAM",       "RAM",    "ROM",          "Flash",
                                            "EEPROM",     "FEPROM", "EPROM",        "CDRAM",
                                            "3DRAM",      "SDRAM",  "SGRAM",        "RDRAM",
                                            "DDR",        "DDR2",   "DDR2 FB-DIMM", nullptr,
                                            "DDR3",       "FBD2",   "DDR4"};
    const bool known = type >= 0 && type < qint64(std::size(texts)) && texts[type];
    return known ? QString::fromLatin1(texts[type]) : Words::tr("Other");
}

QString firmwareMemoryType(quint64 type)
{
    switch (type) {
    case 18:
        return QStringLiteral("DDR");
    case 19:
        return QStringLiteral("DDR2");
    case 20:
        return QStringLiteral("DDR2 FB-DIMM");
    case 24:
        return QStringLiteral("DDR3");
    case 25:
        return QStringLiteral("FBD2");
    case 26:
        return QStringLiteral("DDR4");
    case 27:
        return QStringLiteral("LPDDR");
    case 28:
        return QStringLiteral("LPDDR2");
    case 29:
        return QStringLiteral("LPDDR3");
    case 30:
        return QStringLiteral("LPDDR4");
    case 31:
        return Words::tr("Non-volatile");
    case 32:
        return QStringLiteral("HBM");
    case 33:
        return QStringLiteral("HBM2");
    case 34:
        return QStringLiteral("DDR5");
    case 35:
        return QStringLiteral("LPDDR5");
    case 36:
        return QStringLiteral("HBM3");
    default:
        return {};
    }
}

QString memoryMaker(const QString &manufacturer)
{
    struct Maker {
        const char *code;
        const char *suffix;
    };
    static constexpr Maker makers[] = {
        {"0x014F", " (Transcend Information)"},     {"0x2C00", " (Micron Technology, Inc.)"},
        {"0x802C", " (Micron Technology, Inc.)"},   {"0x80AD", " (Hynix Semiconductor Inc.)"},
        {"0xAD00", " (Hynix Semiconductor Inc.)"},  {"0x80CE", " (Samsung Electronics, Inc.)"},
        {"0xCE00", " (Samsung Electronics, Inc.)"},
    };
    for (const Maker &maker : makers) {
        if (manufacturer == QLatin1String(maker.code))
            return manufacturer + QLatin1String(maker.suffix);
    }
    return manufacturer;
}

Page memoryPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::Memory);
    Row top = totalsRow(machine.memory());
    page.sections = {top};
    publish(page);
    Row more = section(SYSTEMINFO_LABEL("More About the Modules"), QStringLiteral("SysInfoMemory16.png"));
    ask(machine, page, moduleQuery(), Words::tr("the memory modules"), [&](const core::WmiRow &module) {
        top.add(slotRow(module));
        more.add(moreRow(module));
    });
    page.sections = {std::move(top)};
    if (!more.children.empty())
        page.sections.push_back(std::move(more));
    return page;
}

} // namespace systeminfo
