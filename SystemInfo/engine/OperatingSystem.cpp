// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/OperatingSystem.h"

#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/System.h"
#include "SystemInfo/engine/WmiNotice.h"

namespace systeminfo
{

namespace
{

using Hive = core::RegistryView::Hive;

// Windows' application id in the software licensing service, as documented by Microsoft.
core::WmiQuery licenseQuery()
{
    return {.text = QStringLiteral("SELECT Description, LicenseStatus FROM SoftwareLicensingProduct WHERE "
                                   "ApplicationID = '55c92734-d682-4d71-983e-d6ec3f16059f' AND "
                                   "PartialProductKey IS NOT NULL"),
            .properties = {QStringLiteral("Description"), QStringLiteral("LicenseStatus")}};
}

core::WmiQuery hotFixQuery()
{
    return {.text =
                QStringLiteral("SELECT HotFixID, Description, InstalledOn FROM Win32_QuickFixEngineering"),
            .properties = {QStringLiteral("HotFixID"), QStringLiteral("Description"),
                           QStringLiteral("InstalledOn")}};
}

core::WmiQuery guardQuery()
{
    return {.text = QStringLiteral("SELECT VirtualizationBasedSecurityStatus FROM Win32_DeviceGuard"),
            .properties = {QStringLiteral("VirtualizationBasedSecurityStatus")},
            .scope = QStringLiteral("ROOT\\Microsoft\\Windows\\DeviceGuard")};
}

QString secureBoot(core::RegistryView &registry)
{
    const auto on = registry
                        .value(Hive::LocalMachine,
                               QStringLiteral("SYSTEM\\CurrentControlSet\\Control\\SecureBoot\\State"),
                               QStringLiteral("UEFISecureBootEnabled"))
                        .toNumber();
    if (!on)
        return {};
    return *on ? Words::tr("On") : Words::tr("Off");
}

QString installDate(core::RegistryView &registry)
{
    const auto seconds =
        registry
            .value(Hive::LocalMachine, QStringLiteral("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion"),
                   QStringLiteral("InstallDate"))
            .toNumber();
    return seconds.value_or(0) ? timeText(QDateTime::fromSecsSinceEpoch(static_cast<qint64>(*seconds)))
                               : QString();
}

QString lastBoot(const SystemFacts &facts)
{
    return facts.uptimeSeconds && facts.now.isValid()
               ? timeText(facts.now.addSecs(-static_cast<qint64>(facts.uptimeSeconds)))
               : QString();
}

struct Answers {
    QString channel;
    QString license;
    QString guard;
    std::vector<Row> hotFixes;
    bool hotFixesRead = false;
};

void readLicense(Machine &machine, Page &page, Answers &answers)
{
    ask(machine, page, licenseQuery(), Words::tr("the activation"), [&answers](const core::WmiRow &row) {
        answers.channel = activationChannel(row.text(QStringLiteral("Description")));
        const auto status = row.integer(QStringLiteral("LicenseStatus"));
        answers.license = status ? licenseText(*status) : QString();
    });
}

void readHotFixes(Machine &machine, Page &page, Answers &answers)
{
    const auto take = [&answers](const core::WmiRow &row) {
        QString about = row.text(QStringLiteral("Description"));
        const QString day = row.text(QStringLiteral("InstalledOn"));
        if (!day.isEmpty())
            about += (about.isEmpty() ? QString() : QStringLiteral(", ")) + day;
        answers.hotFixes.push_back(item("Hot Fix", row.text(QStringLiteral("HotFixID")), about));
    };
    answers.hotFixesRead =
        ask(machine, page, hotFixQuery(), Words::tr("the hot fixes"), take) == core::WmiAnswer::Complete;
}

void readGuard(Machine &machine, Page &page, Answers &answers)
{
    ask(machine, page, guardQuery(), Words::tr("virtualization-based security"),
        [&answers](const core::WmiRow &row) {
            const auto status = row.integer(QStringLiteral("VirtualizationBasedSecurityStatus"));
            answers.guard = status ? virtualizationSecurityText(*status) : QString();
        });
}

Row setupRow(const SystemFacts &facts, core::RegistryView &registry, const Answers &answers)
{
    Row top = section(SYSTEMINFO_LABEL("Installation"), QStringLiteral("SysInfoWindows16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Install Date"), installDate(registry)));
    top.add(fact(SYSTEMINFO_LABEL("Last Boot"), lastBoot(facts)));
    top.add(fact(SYSTEMINFO_LABEL("Locale"), facts.locale));
    top.add(fact(SYSTEMINFO_LABEL("Activation"), answers.license));
    top.add(fact(SYSTEMINFO_LABEL("Activation Channel"), answers.channel));
    return top;
}

Row securityRow(core::RegistryView &registry, std::optional<int> encryption, const Answers &answers)
{
    Row top = section(SYSTEMINFO_LABEL("Security"), QStringLiteral("SysInfoWindows16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Secure Boot"), secureBoot(registry)));
    top.add(
        fact(SYSTEMINFO_LABEL("Device Encryption"), encryption ? encryptionText(*encryption) : QString()));
    top.add(fact(SYSTEMINFO_LABEL("Virtualization-Based Security"), answers.guard));
    return top;
}

} // namespace

QString activationChannel(const QString &description)
{
    // The last part is "VOLUME_KMSCLIENT channel".
    const QString last = description.section(QLatin1Char(','), -1).trimmed();
    const QString suffix = QStringLiteral(" channel");
    return last.endsWith(suffix) ? last.chopped(suffix.size()) : QString();
}

QString licenseText(qint64 status)
{
    switch (status) {
    case 0:
        return Words::tr("Not licensed");
    case 1:
        return Words::tr("Activated");
    case 2:
        return Words::tr("In the grace period after installation");
    case 3:
        return Words::tr("In the grace period after a change of hardware");
    case 4:
        return Words::tr("Not genuine, in the grace period");
    case 5:
        return Words::tr("Not activated");
    case 6:
        return Words::tr("In the extended grace period");
    default:
        return {};
    }
}

QString encryptionText(int state)
{
    switch (state) {
    case 1:
        return Words::tr("On");
    case 2:
        return Words::tr("Off");
    case 3:
        return Words::tr("Being encrypted");
    case 4:
        return Words::tr("Being decrypted");
    case 5:
        return Words::tr("Suspended");
    case 6:
        return Words::tr("On, locked");
    case 8:
        return Words::tr("Waiting for activation");
    default:
        return {};
    }
}

QString virtualizationSecurityText(qint64 status)
{
    switch (status) {
    case 0:
        return Words::tr("Off");
    case 1:
        return Words::tr("Enabled, not running");
    case 2:
        return Words::tr("Running");
    default:
        return {};
    }
}

Page operatingSystemPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::OperatingSystem);
    const SystemFacts facts = machine.system();
    if (facts.uptimeSeconds)
        page.uptimeSeconds = facts.uptimeSeconds;
    core::RegistryView &registry = machine.registry();
    const Row first = operatingSystemRow(facts, windowsRelease(facts, registry));
    std::optional<int> encryption;
    Answers answers;
    const auto assemble = [&] {
        Row fixes = section(SYSTEMINFO_LABEL("Hot Fixes"), QStringLiteral("SysInfoWindows16.png"));
        fixes.children = answers.hotFixes;
        if (answers.hotFixesRead)
            fixes = withNone(std::move(fixes));
        page.sections = {first, setupRow(facts, registry, answers),
                         securityRow(registry, encryption, answers), fixes};
    };
    const auto step = [&] {
        assemble();
        publish(page);
        return !machine.stopRequested();
    };
    if (!step())
        return page;
    encryption = machine.encryptionState(facts.windowsFolder.left(3));
    for (const auto read : {readGuard, readHotFixes, readLicense}) {
        if (!step())
            break;
        read(machine, page, answers);
    }
    assemble();
    return page;
}

} // namespace systeminfo
