// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/System.h"

#include "SystemInfo/engine/Format.h"

#include <algorithm>

namespace systeminfo
{

namespace
{

const QString currentVersion = QStringLiteral("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion");
constexpr quint32 firstBuildOfWindows11 = 22000;

QString productName(core::RegistryView &registry)
{
    return registry
        .value(core::RegistryView::Hive::LocalMachine, currentVersion, QStringLiteral("ProductName"))
        .toText()
        .simplified();
}

// Splits "Windows Server 2022 Standard" into "Windows Server 2022" and "Standard".
void splitServer(WindowsRelease &release, const QString &product)
{
    const qsizetype end = product.indexOf(QLatin1Char(' '), QStringLiteral("Windows Server ").size());
    release.name = product.left(end);
    release.edition = end < 0 ? QString() : product.mid(end + 1);
}

} // namespace

WindowsRelease windowsRelease(const SystemFacts &facts, core::RegistryView &registry)
{
    const auto text = [&registry](const char *name) {
        return registry
            .value(core::RegistryView::Hive::LocalMachine, currentVersion, QString::fromLatin1(name))
            .toText();
    };
    WindowsRelease release;
    const QString product = productName(registry);
    if (product.startsWith(QStringLiteral("Windows Server "))) {
        splitServer(release, product);
    } else if (facts.major == 10) {
        release.name = facts.build >= firstBuildOfWindows11 ? QStringLiteral("Windows 11")
                                                            : QStringLiteral("Windows 10");
        release.edition = product.startsWith(QStringLiteral("Windows 1"))
                              ? product.mid(release.name.size() + 1)
                              : text("EditionID");
    } else {
        release.name = product;
    }
    QString display = text("DisplayVersion");
    if (display.isEmpty())
        display = text("ReleaseId");
    if (facts.build > 0) {
        release.version = QStringLiteral("%1.%2").arg(facts.major).arg(facts.minor);
        if (!display.isEmpty())
            release.version += QStringLiteral(" (%1)").arg(display);
        release.build = QString::number(facts.build);
        const auto revision =
            registry.value(core::RegistryView::Hive::LocalMachine, currentVersion, QStringLiteral("UBR"))
                .toNumber();
        if (revision)
            release.build += QLatin1Char('.') + QString::number(*revision);
    }
    return release;
}

Row operatingSystemRow(const SystemFacts &facts, const WindowsRelease &release)
{
    Row top = section(SYSTEMINFO_LABEL("Operating System"), QStringLiteral("SysInfoWindows16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Windows Version"), release.name));
    top.add(fact(SYSTEMINFO_LABEL("Edition"), release.edition));
    top.add(fact(SYSTEMINFO_LABEL("64 bit system"), facts.build ? Value::yesNo(facts.is64Bit) : Value()));
    top.add(fact(SYSTEMINFO_LABEL("Version Number"), release.version));
    top.add(fact(SYSTEMINFO_LABEL("Build Number"), release.build));
    top.add(fact(SYSTEMINFO_LABEL("Computer Name"), facts.computerName, Privacy::Person));
    top.add(fact(SYSTEMINFO_LABEL("User Name"), facts.userName, Privacy::Person));
    top.add(fact(SYSTEMINFO_LABEL("Country"), facts.country));
    top.add(fact(SYSTEMINFO_LABEL("Language"), facts.language));
    top.add(fact(SYSTEMINFO_LABEL("Time Zone"), facts.timeZone));
    top.add(fact(SYSTEMINFO_LABEL("Windows Uptime"),
                 facts.uptimeSeconds ? Value(durationText(facts.uptimeSeconds)) : Value()));
    top.add(fact(SYSTEMINFO_LABEL("Windows Directory"), facts.windowsFolder));
    top.add(fact(SYSTEMINFO_LABEL("Windows System Directory"), facts.systemFolder));
    return top;
}

std::vector<int> updateUptime(Page &page, quint64 seconds)
{
    const QString before = durationText(page.uptimeSeconds.value_or(0));
    const QString now = durationText(seconds);
    if (!page.uptimeSeconds || before == now || page.sections.empty())
        return {};
    std::vector<Row> &rows = page.sections[0].children;
    const auto row = std::ranges::find(rows, stableName(QStringLiteral("Windows Uptime")), &Row::name);
    if (row == rows.end())
        return {};
    row->value = now;
    page.summary.replace(before, now);
    page.uptimeSeconds = seconds;
    return {0, static_cast<int>(row - rows.begin())};
}

} // namespace systeminfo
