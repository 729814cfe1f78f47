// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/engine/InternetRepair.h"

#include "Troubleshooter/engine/ToolText.h"

#include <QCoreApplication>

#include <algorithm>

namespace repair
{

namespace
{

constexpr quint16 webPort = 80;
constexpr int slowLookup = 2000; // ms

QString tr(const char *text)
{
    return QCoreApplication::translate("repair", text);
}

// A link-local address, which the PC assigns itself if no DHCP server answers (RFC 3927).
bool isSelfAssigned(const QString &address)
{
    return address.startsWith(QLatin1String("169.254."));
}

bool isUsable(const QString &address)
{
    return !isSelfAssigned(address) && !address.startsWith(QLatin1String("fe80:"), Qt::CaseInsensitive);
}

// Facts from the findings that determine which steps to recommend.
struct Signs {
    bool address = false; // no address from the router
    bool names = false;   // name resolution fails
    bool automatic = false;
    bool connected = false;
};

QString namesOf(const QList<Adapter> &adapters)
{
    QStringList names;
    for (const Adapter &adapter : adapters)
        names.append(adapter.name);
    return names.join(QStringLiteral(", "));
}

QList<Adapter> connected(const QList<Adapter> &adapters)
{
    QList<Adapter> up;
    std::ranges::copy_if(adapters, std::back_inserter(up), &Adapter::up);
    return up;
}

Finding cableFinding(const std::optional<QList<Adapter>> &adapters, const QList<Adapter> &up)
{
    const QString subject = tr("Connection");
    if (!adapters)
        return {Health::Note, subject, tr("Windows did not list the network adapters.")};
    if (adapters->isEmpty())
        return {Health::Problem, subject,
                tr("This PC has no network adapter that works. Its driver may be missing, or it is switched "
                   "off.")};
    if (up.isEmpty())
        return {Health::Problem, subject,
                tr("Nothing is connected (%1). Check the cable, Wi-Fi and airplane mode.")
                    .arg(namesOf(*adapters))};
    return {Health::Good, subject, tr("%1 is connected.").arg(namesOf(up))};
}

Finding addressFinding(const QList<Adapter> &up, Signs &signs)
{
    const QString subject = tr("Address");
    QStringList addresses, gateways;
    bool selfAssigned = false;
    for (const Adapter &adapter : up) {
        std::ranges::copy_if(adapter.addresses, std::back_inserter(addresses), isUsable);
        gateways += adapter.gateways;
        selfAssigned = selfAssigned || std::ranges::any_of(adapter.addresses, isSelfAssigned);
        signs.automatic = signs.automatic || adapter.automatic;
    }
    if (addresses.isEmpty()) {
        signs.address = true;
        return {Health::Problem, subject,
                selfAssigned ? tr("The router has not assigned an address. Asking again may help, and so may "
                                  "restarting the router.")
                             : tr("The connection has no address.")};
    }
    if (gateways.isEmpty()) {
        signs.address = true;
        return {
            Health::Problem, subject,
            tr("%1, but there is no gateway out of this network.").arg(addresses.join(QStringLiteral(", ")))};
    }
    return {Health::Good, subject,
            tr("%1, through the router %2.")
                .arg(addresses.join(QStringLiteral(", ")), gateways.join(QStringLiteral(", ")))};
}

Finding namesFinding(const QList<Adapter> &up, const Lookup &lookup, Signs &signs)
{
    const QString subject = tr("Names (DNS)");
    QStringList servers;
    for (const Adapter &adapter : up)
        servers += adapter.nameServers;
    servers.removeDuplicates();
    const QString list = servers.join(QStringLiteral(", "));
    if (lookup.answered && lookup.milliseconds < slowLookup)
        return {Health::Good, subject,
                tr("%1 was found in %2 ms.").arg(testHost).arg(lookup.milliseconds) +
                    (list.isEmpty() ? QString() : u' ' + tr("Asked: %1.").arg(list))};
    if (lookup.answered)
        return {Health::Note, subject,
                tr("%1 was found, but that took %2 seconds.").arg(testHost).arg(lookup.milliseconds / 1000)};
    signs.names = true;
    if (servers.isEmpty())
        return {Health::Problem, subject, tr("No DNS server is set.")};
    const QString text = tr("%1 was not found. Asked: %2.").arg(testHost, list);
    return {Health::Problem, subject, lookup.problem.isEmpty() ? text : text + u' ' + lookup.problem};
}

Finding proxyFinding(const Proxy &proxy, bool webAnswers)
{
    const QString subject = tr("Proxy");
    if (proxy.server.isEmpty() && proxy.script.isEmpty())
        return {Health::Good, subject, tr("None.")};
    const QString text = proxy.server.isEmpty() ? tr("Chosen by the script %1.").arg(proxy.script)
                                                : tr("Programs go through %1.").arg(proxy.server);
    return {Health::Note, subject,
            webAnswers ? text : text + u' ' + tr("If you did not set it, remove it in Windows' settings.")};
}

Finding wayOutFinding(Connectivity connectivity, bool found, bool webAnswers, const Proxy &proxy)
{
    const QString subject = tr("Internet");
    if (connectivity == Connectivity::SignIn)
        return {Health::Problem, subject,
                tr("This network wants you to sign in first. Open any web page to do so.")};
    if (webAnswers)
        return {Health::Good, subject,
                connectivity == Connectivity::Internet
                    ? tr("%1 answers, and Windows says that there is Internet.").arg(testHost)
                    : tr("%1 answers.").arg(testHost)};
    if (!proxy.server.isEmpty() && connectivity == Connectivity::Internet)
        return {Health::Note, subject, tr("Windows says that there is Internet, by way of the proxy.")};
    if (!found)
        return {Health::Problem, subject, tr("Nothing can be reached by its name.")};
    return {
        Health::Problem, subject,
        connectivity == Connectivity::Internet
            ? tr("Windows says that there is Internet, but %1 does not answer. A firewall may be in the way.")
                  .arg(testHost)
            : tr("%1 does not answer. The fault may be outside this PC: restart the router first.")
                  .arg(testHost)};
}

QList<Step> stepsFor(const Signs &signs, const QString &folder)
{
    const QString saved = tr("What is set now is saved in %1 first.").arg(folder);
    const QString noFolder = folder.isEmpty() ? tr("There is no folder for the restore file.") : QString();
    const QString rights = tr("Windows asks for administrator rights.");
    return {
        {.id = QStringLiteral("flush"),
         .title = tr("Empty the DNS cache"),
         .plan = tr("Nothing is closed, and names are looked up again as needed."),
         .obstacle = {},
         .advised = signs.names},
        {.id = QStringLiteral("renew"),
         .title = tr("Ask the router for an address again"),
         .plan = tr("The connection may break off for some seconds: downloads and calls end. Addresses that "
                    "were set "
                    "by hand stay.") +
                 u' ' + rights,
         .obstacle = !signs.connected   ? tr("Nothing is connected.")
                     : !signs.automatic ? tr("The addresses are set by hand: there is no router to ask.")
                                        : QString(),
         .advised = signs.address,
         .elevated = true},
        {.id = QStringLiteral("sockets"),
         .title = tr("Reset the network sockets (Winsock)"),
         .plan = tr("Removes what other programs have put between Windows and the network. VPN programs, "
                    "filters and "
                    "virus scanners may have to be installed again.") +
                 u' ' + saved + u' ' + tr("A double click on that file puts it back.") + u' ' + rights,
         .obstacle = noFolder,
         .elevated = true,
         .restart = true},
        {.id = QStringLiteral("addresses"),
         .title = tr("Reset the network settings (TCP/IP)"),
         .plan = tr("Addresses, gateways and name servers that were set by hand are forgotten, and with them "
                    "perhaps "
                    "the way into an office network.") +
                 u' ' + saved + u' ' +
                 tr("\"netsh -f\" with the name of that file, as an administrator, puts them back.") + u' ' +
                 rights,
         .obstacle = noFolder,
         .elevated = true,
         .restart = true},
    };
}

} // namespace

Examination InternetRepair::check(const core::CancelFlag &cancel)
{
    const std::optional<QList<Adapter>> adapters = m_network.adapters();
    const QList<Adapter> up = adapters ? connected(*adapters) : QList<Adapter>();
    Examination found;
    Signs signs;
    signs.connected = !up.isEmpty() || !adapters;
    signs.automatic = !adapters; // unknown
    found.findings.append(cableFinding(adapters, up));
    if (signs.connected && !cancel.isSet()) {
        if (adapters)
            found.findings.append(addressFinding(up, signs));
        const Lookup lookup = m_network.lookUp(testHost.toString(), cancel);
        const Proxy proxy = m_network.proxy();
        const bool answers = lookup.answered && m_network.connects(testHost.toString(), webPort, cancel);
        found.findings.append(namesFinding(up, lookup, signs));
        found.findings.append(proxyFinding(proxy, answers));
        found.findings.append(wayOutFinding(m_network.connectivity(), lookup.answered, answers, proxy));
    }
    found.steps = stepsFor(signs, m_tools.restoreFolder());
    return found;
}

QString InternetRepair::restorePath(const QString &name) const
{
    return m_tools.restoreFolder() + u'\\' + m_tools.now().toString(QStringLiteral("yyyy-MM-dd HH-mm-ss ")) +
           name;
}

Outcome InternetRepair::apply(const Step &step, const core::CancelFlag &cancel)
{
    const auto outcomeOf = [&](Tool tool, const QString &done) {
        const ToolRun run = m_tools.run(tool, {}, cancel);
        Outcome outcome{step.id, step.title, run.succeeded(), false, toolText(run, done)};
        // A tool that ended with an error may still have changed something.
        outcome.restart = step.restart && run.state == ToolRun::State::Ended;
        return outcome;
    };
    if (step.id == QLatin1String("flush"))
        return outcomeOf(Tool::FlushDns, tr("The DNS cache was emptied."));
    if (step.id == QLatin1String("renew"))
        return outcomeOf(Tool::RenewAddresses, tr("The router was asked."));

    const bool sockets = step.id == QLatin1String("sockets");
    const QString path =
        restorePath(sockets ? QStringLiteral("network sockets.reg") : QStringLiteral("network settings.txt"));
    const ToolRun saving = m_tools.run(sockets ? Tool::SaveSockets : Tool::SaveAddresses, path, cancel);
    const bool saved =
        saving.succeeded() && (sockets || m_tools.save(path, saving.output)) && m_tools.holdsSomething(path);
    if (!saved)
        return {step.id, step.title, false, false,
                tr("Not done: what is set now could not be saved to %1.").arg(path)};
    if (cancel.isSet())
        return {step.id, step.title, false, false, tr("Not done: you cancelled.")};
    Outcome outcome = outcomeOf(sockets ? Tool::ResetSockets : Tool::ResetAddresses,
                                tr("Done. It takes effect after Windows is restarted."));
    outcome.text += u' ' + tr("The way back: %1").arg(path);
    return outcome;
}

} // namespace repair
