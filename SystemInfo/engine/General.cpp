// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/General.h"

#include "SystemInfo/engine/Devices.h"
#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"

namespace systeminfo
{

namespace
{

const QString processorKey = QStringLiteral("HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0");

core::RegistryValue hardware(core::RegistryView &registry, const QString &key, const char *name)
{
    return registry.value(core::RegistryView::Hive::LocalMachine, key, QString::fromLatin1(name));
}

Row memoryRow(const MemoryStatus &status)
{
    const auto size = [](quint64 bytes) { return bytes ? gigabytes(wholeGigabytes(bytes)) : Value(); };
    Row top = section(SYSTEMINFO_LABEL("Memory"), QStringLiteral("SysInfoMemory16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Physical Memory"), size(status.totalPhysical)));
    top.add(fact(SYSTEMINFO_LABEL("Virtual Memory"), size(status.totalPageFile)));
    return top;
}

Row screenRow(const QSize &size)
{
    Row top = section(SYSTEMINFO_LABEL("Screen Resolution"), QStringLiteral("SysInfoScreenRes16.png"));
    if (!size.isEmpty())
        top.value = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    return top;
}

Row printersRow(const QStringList &printers)
{
    Row top = section(SYSTEMINFO_LABEL("Printer"), QStringLiteral("SysInfoPrinter16.png"));
    for (const QString &printer : printers)
        top.add(item("Printer", printer));
    return top;
}

// "Intel(R) Core(TM) i7-8650U CPU @ 1.90GHz" -> "Intel Core i7-8650U": as people say it.
QString spokenProcessor(QString name)
{
    for (const auto *mark : {"(R)", "(TM)", "(r)", "(tm)"})
        name.remove(QLatin1String(mark));
    name = name.section(QLatin1Char('@'), 0, 0).simplified();
    for (const auto *end : {" CPU", " Processor"}) {
        if (name.endsWith(QLatin1String(end)))
            name.chop(static_cast<qsizetype>(qstrlen(end)));
    }
    return name;
}

QString spokenMachine(core::RegistryView &registry)
{
    const QString bios = QStringLiteral("HARDWARE\\DESCRIPTION\\System\\BIOS");
    const QString maker = hardware(registry, bios, "SystemManufacturer").toText().simplified();
    const QString model = hardware(registry, bios, "SystemProductName").toText().simplified();
    if (model.isEmpty() || model.startsWith(maker, Qt::CaseInsensitive))
        return model;
    return (maker + QLatin1Char(' ') + model).simplified();
}

quint64 totalOf(const std::vector<Volume> &volumes)
{
    quint64 bytes = 0;
    for (const Volume &volume : volumes)
        bytes += volume.totalBytes;
    return bytes;
}

} // namespace

Row processorRow(core::RegistryView &registry)
{
    const auto speed = hardware(registry, processorKey, "~MHz").toNumber();
    Row top = section(SYSTEMINFO_LABEL("CPU"), QStringLiteral("SysInfoCPU16.png"));
    top.add(fact(SYSTEMINFO_LABEL("Name"),
                 hardware(registry, processorKey, "ProcessorNameString").toText().trimmed()));
    top.add(fact(SYSTEMINFO_LABEL("Identifier"), hardware(registry, processorKey, "Identifier").toText()));
    // Divided by 1000, whereas the processor page divides by 1024.
    top.add(fact(
        SYSTEMINFO_LABEL("Speed"),
        speed ? Value::of(static_cast<double>(static_cast<float>(*speed) / 1000.0f), QStringLiteral("GHz"))
              : Value()));
    return top;
}

Row volumesRow(const std::vector<Volume> &volumes)
{
    const auto size = [](quint64 bytes) {
        const float gigabyte = 1.0f / (1 << 30);
        return QString::number(static_cast<double>(static_cast<float>(bytes) * gigabyte), 'f', 2) +
               QStringLiteral(" GB");
    };
    Row top = section(SYSTEMINFO_LABEL("Logical Storage Device"), QStringLiteral("SysInfoDisk16.png"));
    for (const Volume &volume : volumes) {
        const QString name = volume.label.isEmpty() ? Words::tr("Local Disk") : volume.label;
        const QString text =
            volume.totalBytes ? Words::tr("%1 (%2 free)").arg(size(volume.totalBytes), size(volume.freeBytes))
                              : QString();
        Row &row = top.add(item("Volume", QStringLiteral("%1 (%2:)").arg(name, volume.root.left(1)), text));
        row.openPath = volume.root;
    }
    return top;
}

Row adaptersRow(const std::vector<Adapter> &adapters)
{
    Row top = section(SYSTEMINFO_LABEL("Network Adapter"), QStringLiteral("SysInfoNetworkCard16.png"));
    const auto type = [](quint32 number) {
        switch (number) {
        case 6:
            return Words::tr("Ethernet");
        case 9:
            return Words::tr("Token Ring");
        case 15:
            return Words::tr("FDDI");
        case 24:
            return Words::tr("Lookback"); // the spelling is deliberate
        case 28:
            return Words::tr("Slip");
        default:
            return Words::tr("Other");
        }
    };
    for (std::size_t i = 0; i < adapters.size(); ++i) {
        Row &row = top.add(numbered(SYSTEMINFO_LABEL("Adapter #"), qsizetype(i)));
        row.add(fact(SYSTEMINFO_LABEL("Description"), adapters[i].description));
        row.add(fact(SYSTEMINFO_LABEL("Type"), type(adapters[i].type)));
        row.add(fact(SYSTEMINFO_LABEL("IP Address"), adapters[i].firstAddress, Privacy::Address));
    }
    return top;
}

Row connectionsRow(const std::vector<Connection> &connections)
{
    Row top = section(SYSTEMINFO_LABEL("Network Connections"), QStringLiteral("SysInfoNetworkCard16.png"));
    for (const Connection &connection : connections) {
        Row &row = top.add(item("Connection", connection.name,
                                connection.connected ? Words::tr("Connected") : Words::tr("Not connected")));
        row.add(fact(SYSTEMINFO_LABEL("Speed"),
                     connection.bitsPerSecond ? Value::of(static_cast<double>(connection.bitsPerSecond) / 1e6,
                                                          QStringLiteral("Mbit/s"))
                                              : Value()));
        for (const QString &address : connection.addresses)
            row.add(fact(SYSTEMINFO_LABEL("Address"), address, Privacy::Address));
        row.add(fact(SYSTEMINFO_LABEL("Hardware Address"), connection.hardwareAddress, Privacy::Address));
    }
    return top;
}

Row graphicsRow(const std::vector<GraphicsAdapter> &adapters)
{
    Row top = section(SYSTEMINFO_LABEL("Graphics Memory"), QStringLiteral("SysInfoScreenRes16.png"));
    for (const GraphicsAdapter &adapter : adapters) {
        Row &row = top.add(item("Graphics", adapter.name));
        row.add(fact(SYSTEMINFO_LABEL("Dedicated Memory"), videoMemory(adapter.dedicatedBytes)));
        row.add(fact(SYSTEMINFO_LABEL("Shared Memory"), videoMemory(adapter.sharedBytes)));
    }
    return top;
}

QString machineSummary(Machine &machine, const SystemFacts &facts, const WindowsRelease &release,
                       const std::vector<Volume> &volumes)
{
    core::RegistryView &registry = machine.registry();
    const QString processor =
        spokenProcessor(hardware(registry, processorKey, "ProcessorNameString").toText());
    QString name = spokenMachine(registry);
    if (name.isEmpty())
        name = Words::tr("A computer");
    QStringList parts;
    if (!processor.isEmpty())
        parts << processor;
    if (const quint64 memory = startedGigabytes(machine.memory().totalPhysical))
        parts << Words::tr("%1 GB of memory").arg(memory);
    if (const quint64 disk = wholeGigabytes(totalOf(volumes)))
        parts << Words::tr("%1 GB of disk space").arg(disk);
    QString text = name;
    if (!parts.isEmpty()) {
        const QString last = parts.takeLast();
        text = parts.isEmpty()
                   ? Words::tr("%1 with %2").arg(name, last)
                   : Words::tr("%1 with %2 and %3").arg(name, parts.join(QStringLiteral(", ")), last);
    }
    const QString windows = (release.name + QLatin1Char(' ') + release.edition).simplified();
    if (!windows.isEmpty() && facts.uptimeSeconds)
        return Words::tr("%1, running %2 for %3.").arg(text, windows, durationText(facts.uptimeSeconds));
    return windows.isEmpty() ? text + QLatin1Char('.') : Words::tr("%1, running %2.").arg(text, windows);
}

Page generalPage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::General);
    core::RegistryView &registry = machine.registry();
    const SystemFacts facts = machine.system();
    const WindowsRelease release = windowsRelease(facts, registry);
    if (facts.uptimeSeconds)
        page.uptimeSeconds = facts.uptimeSeconds;
    page.sections = {operatingSystemRow(facts, release), processorRow(registry), memoryRow(machine.memory())};
    for (Row &row : videoAdapterRows(registry))
        page.sections.push_back(std::move(row));
    page.sections.push_back(screenRow(machine.primaryScreen()));
    page.sections.push_back(monitorRow(machine));
    // Drives, adapters and printers are queried one after another, as each query may block.
    const std::size_t begin = page.sections.size();
    std::vector<Row> waiting = {
        volumesRow({}),    powerRow(machine.power()), adaptersRow({}),    printersRow({}),
        mouseRow(machine), keyboardRow(machine),      connectionsRow({}), graphicsRow({})};
    const auto step = [&] {
        page.sections.resize(begin);
        page.sections.insert(page.sections.end(), waiting.begin(), waiting.end());
        publish(page);
    };
    step();
    const std::vector<Volume> volumes = machine.fixedVolumes();
    waiting[0] = volumesRow(volumes);
    page.summary = machineSummary(machine, facts, release, volumes);
    step();
    waiting[2] = adaptersRow(machine.adapters());
    waiting[6] = connectionsRow(machine.connections());
    step();
    waiting[3] = printersRow(machine.printers());
    step();
    waiting[7] = graphicsRow(machine.graphics());
    step();
    return page;
}

} // namespace systeminfo
