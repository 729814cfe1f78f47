// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/WmiNotice.h"

namespace systeminfo
{

namespace
{

core::WmiQuery boardQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_BaseBoard"),
            .properties = {QStringLiteral("Product"), QStringLiteral("Manufacturer"),
                           QStringLiteral("SerialNumber"), QStringLiteral("Version")}};
}

core::WmiQuery biosQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_BIOS"),
            .properties = {QStringLiteral("Name"), QStringLiteral("Manufacturer"), QStringLiteral("Version"),
                           QStringLiteral("SerialNumber"), QStringLiteral("ReleaseDate")}};
}

Page assemble(const core::WmiRow &board, const core::WmiRow &bios)
{
    Page page = emptyPage(PageId::Motherboard);
    Row top = section(SYSTEMINFO_LABEL("Motherboard"), QStringLiteral("SysInfoCPU16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Model"), board.text(QStringLiteral("Product"))));
    top.add(fact(SYSTEMINFO_LABEL("Manufacturer"), board.text(QStringLiteral("Manufacturer"))));
    top.add(
        fact(SYSTEMINFO_LABEL("Serial Number"), board.text(QStringLiteral("SerialNumber")), Privacy::Serial));
    top.add(fact(SYSTEMINFO_LABEL("Version"), board.text(QStringLiteral("Version"))));
    top.add(fact(SYSTEMINFO_LABEL("BIOS Name"), bios.text(QStringLiteral("Name"))));
    top.add(fact(SYSTEMINFO_LABEL("BIOS Manufacturer"), bios.text(QStringLiteral("Manufacturer"))));
    top.add(fact(SYSTEMINFO_LABEL("BIOS Version"), bios.text(QStringLiteral("Version"))));
    top.add(fact(SYSTEMINFO_LABEL("BIOS Serial Number"), bios.text(QStringLiteral("SerialNumber")),
                 Privacy::Serial));
    top.add(fact(SYSTEMINFO_LABEL("BIOS Release Date"), wmiDate(bios.text(QStringLiteral("ReleaseDate")))));
    page.sections.push_back(std::move(top));
    return page;
}

// With several boards the last one wins; fields that it lacks keep the previous value.
void merge(core::WmiRow &target, const core::WmiRow &row, const QStringList &properties)
{
    for (const QString &name : properties) {
        if (row.has(name))
            target.set(name, row.text(name));
    }
}

} // namespace

Page motherboardPage(Machine &machine, const Publish &publish)
{
    core::WmiRow board;
    core::WmiRow bios;
    Page asked;
    publish(assemble(board, bios));
    ask(machine, asked, boardQuery(), Words::tr("the motherboard"),
        [&board](const core::WmiRow &row) { merge(board, row, boardQuery().properties); });
    publish(assemble(board, bios));
    ask(machine, asked, biosQuery(), Words::tr("the BIOS"),
        [&bios](const core::WmiRow &row) { merge(bios, row, biosQuery().properties); });
    Page page = assemble(board, bios);
    page.notices = asked.notices;
    return page;
}

} // namespace systeminfo
