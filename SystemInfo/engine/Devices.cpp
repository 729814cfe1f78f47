// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Devices.h"

#include "SystemInfo/engine/Edid.h"
#include "SystemInfo/engine/Format.h"

#include <algorithm>

namespace systeminfo
{

namespace
{

using Hive = core::RegistryView::Hive;

const QString enumKey = QStringLiteral("SYSTEM\\CurrentControlSet\\Enum\\");
const QString classKey = QStringLiteral("SYSTEM\\CurrentControlSet\\Control\\Class\\");
const QString mouseClass = QStringLiteral("{4d36e96f-e325-11ce-bfc1-08002be10318}");
const QString keyboardClass = QStringLiteral("{4d36e96b-e325-11ce-bfc1-08002be10318}");

struct Device {
    QString key; // below HKEY_LOCAL_MACHINE
    QString description;
    QString service;
    QString classId;
    bool present = false;
};

QString textOf(core::RegistryView &registry, const QString &key, const QString &name)
{
    return registry.value(Hive::LocalMachine, key, name).toText();
}

std::vector<Device> devicesOf(Machine &machine, const QString &enumerator)
{
    std::vector<Device> devices;
    core::RegistryView &registry = machine.registry();
    for (const QString &model : registry.subkeys(Hive::LocalMachine, enumKey + enumerator)) {
        const QString modelKey = enumerator + QLatin1Char('\\') + model;
        for (const QString &instance : registry.subkeys(Hive::LocalMachine, enumKey + modelKey)) {
            const QString id = modelKey + QLatin1Char('\\') + instance;
            const QString key = enumKey + id;
            devices.push_back({key, shownPart(textOf(registry, key, QStringLiteral("DeviceDesc"))),
                               textOf(registry, key, QStringLiteral("Service")),
                               textOf(registry, key, QStringLiteral("ClassGUID")), machine.isPresent(id)});
        }
    }
    return devices;
}

void keepPresent(std::vector<Device> &devices)
{
    if (std::ranges::any_of(devices, &Device::present))
        std::erase_if(devices, [](const Device &device) { return !device.present; });
}

QString withAbsence(const Device &device, const QString &text)
{
    if (device.present)
        return text;
    const QString absent = Words::tr("not connected");
    return text.isEmpty() ? absent : Words::tr("%1, %2").arg(text, absent);
}

// The description in the class key, for all devices of this kind: "Mice and other pointing devices".
QString classDescription(core::RegistryView &registry, const QString &classId)
{
    if (classId.isEmpty())
        return {};
    const QString told = shownPart(textOf(registry, classKey + classId, QStringLiteral("ClassDesc")));
    return told.isEmpty() ? textOf(registry, classKey + classId, QString()) : told;
}

Row inputRow(Machine &machine, Row top, const char *name, const QString &service, const QString &classId,
             const QString &oldName)
{
    std::vector<Device> devices = devicesOf(machine, QStringLiteral("HID"));
    std::erase_if(devices, [&](const Device &device) {
        return device.service.compare(service, Qt::CaseInsensitive) != 0;
    });
    // Devices on the legacy PS/2 interface, including a notebook's built-in ones.
    for (const Device &device : devicesOf(machine, QStringLiteral("ACPI"))) {
        if (device.service.compare(QStringLiteral("i8042prt"), Qt::CaseInsensitive) == 0 &&
            device.classId.compare(classId, Qt::CaseInsensitive) == 0)
            devices.push_back(device);
    }
    keepPresent(devices);
    for (const Device &device : devices) {
        top.add(item(name, device.description.isEmpty() ? oldName : device.description,
                     withAbsence(device, classDescription(machine.registry(), device.classId))));
    }
    return top;
}

void addIdentity(Row &row, const MonitorIdentity &monitor)
{
    row.add(fact(SYSTEMINFO_LABEL("Maker"), monitor.maker));
    row.add(
        fact(SYSTEMINFO_LABEL("Native Size"),
             monitor.nativeSize.isEmpty()
                 ? QString()
                 : QStringLiteral("%1x%2").arg(monitor.nativeSize.width()).arg(monitor.nativeSize.height())));
    row.add(
        fact(SYSTEMINFO_LABEL("Refresh Rate"),
             monitor.refreshRate > 0 ? Value::of(monitor.refreshRate, QStringLiteral("Hz"), 4) : Value()));
    row.add(fact(SYSTEMINFO_LABEL("Picture Size"), monitor.imageMillimetres.isEmpty()
                                                       ? QString()
                                                       : Words::tr("%1 x %2 mm")
                                                             .arg(monitor.imageMillimetres.width())
                                                             .arg(monitor.imageMillimetres.height())));
    row.add(fact(SYSTEMINFO_LABEL("Year"), monitor.year ? QString::number(monitor.year) : QString()));
    row.add(fact(SYSTEMINFO_LABEL("Serial Number"), monitor.serialNumber, Privacy::Serial));
}

// Strips the start of "\REGISTRY\MACHINE\SYSTEM\...", ignoring case; empty for another hive.
QString belowLocalMachine(const QString &kernelPath)
{
    const QString prefix = QStringLiteral("\\REGISTRY\\MACHINE\\");
    return kernelPath.startsWith(prefix, Qt::CaseInsensitive) ? kernelPath.mid(prefix.size()) : QString();
}

// Finds an adapter's class key by description and version. On Windows 10 the adapter's own key links to it;
// older versions keep two copies.
QString adapterClassKey(core::RegistryView &registry, const QString &adapterKey)
{
    const QString displays = classKey + QStringLiteral("{4d36e968-e325-11ce-bfc1-08002be10318}");
    const QString wanted = textOf(registry, adapterKey, QStringLiteral("DriverDesc"));
    for (const QString &number : registry.subkeys(Hive::LocalMachine, displays)) {
        const QString key = displays + QLatin1Char('\\') + number;
        if (!wanted.isEmpty() && textOf(registry, key, QStringLiteral("DriverDesc")) == wanted)
            return key;
    }
    return adapterKey;
}

core::RegistryValue adapterValue(core::RegistryView &registry, const QStringList &keys, const char *name)
{
    for (const QString &key : keys) {
        const core::RegistryValue value = registry.value(Hive::LocalMachine, key, QString::fromLatin1(name));
        if (value.exists())
            return value;
    }
    return {};
}

Row adapterRow(core::RegistryView &registry, const QString &key)
{
    const QStringList keys = key.isEmpty() ? QStringList() : QStringList{adapterClassKey(registry, key), key};
    const auto text = [&](const char *name) { return Value(adapterValue(registry, keys, name).toText()); };
    Row row = section(SYSTEMINFO_LABEL("Video Adapter"), QStringLiteral("SysInfoScreenRes16.png"));
    row.value = text("DriverDesc");
    row.add(fact(SYSTEMINFO_LABEL("Name"), text("HardwareInformation.AdapterString")));
    row.add(fact(SYSTEMINFO_LABEL("BIOS"), text("HardwareInformation.BiosString")));
    row.add(fact(SYSTEMINFO_LABEL("Chip Type"), text("HardwareInformation.ChipType")));
    row.add(fact(SYSTEMINFO_LABEL("Dac Type"), text("HardwareInformation.DacType")));
    row.add(fact(SYSTEMINFO_LABEL("Driver Version"), text("DriverVersion")));
    row.add(fact(SYSTEMINFO_LABEL("Driver Date"), text("DriverDate")));
    row.add(fact(SYSTEMINFO_LABEL("Provider Name"), text("ProviderName")));
    auto memory = adapterValue(registry, keys, "HardwareInformation.qwMemorySize").toNumber();
    if (!memory)
        memory = adapterValue(registry, keys, "HardwareInformation.MemorySize").toNumber();
    row.add(fact(SYSTEMINFO_LABEL("Memory Size"), memory ? videoMemory(*memory) : Value()));
    return row;
}

} // namespace

QString shownPart(const QString &deviceText)
{
    return deviceText.mid(deviceText.lastIndexOf(QLatin1Char(';')) + 1);
}

Value videoMemory(quint64 bytes)
{
    constexpr quint64 megabyte = quint64(1) << 20, gigabyte = quint64(1) << 30;
    if (bytes > 0 && bytes % gigabyte == 0)
        return Value::of(static_cast<qint64>(bytes / gigabyte), QStringLiteral("GB"));
    return Value::of(static_cast<qint64>(bytes / megabyte), QStringLiteral("MB"));
}

std::vector<Row> videoAdapterRows(core::RegistryView &registry)
{
    const QString map = QStringLiteral("HARDWARE\\DEVICEMAP\\VIDEO");
    std::vector<Row> rows;
    for (const QString &name : registry.valueNames(Hive::LocalMachine, map)) {
        if (!name.startsWith(QStringLiteral("\\Device\\Video"), Qt::CaseInsensitive))
            continue;
        Row row = adapterRow(registry, belowLocalMachine(textOf(registry, map, name)));
        // An adapter has one entry per possible output.
        if (!row.value.text.isEmpty() && std::ranges::find(rows, row) == rows.end())
            rows.push_back(std::move(row));
    }
    if (rows.empty())
        rows.push_back(adapterRow(registry, {}));
    return rows;
}

Row monitorRow(Machine &machine)
{
    Row top = section(SYSTEMINFO_LABEL("Monitor"), QStringLiteral("SysInfoMonitor16.png"));
    std::vector<Device> devices = devicesOf(machine, QStringLiteral("DISPLAY"));
    keepPresent(devices);
    for (const Device &device : devices) {
        const auto identity =
            readEdid(machine.registry()
                         .value(Hive::LocalMachine, device.key + QStringLiteral("\\Device Parameters"),
                                QStringLiteral("EDID"))
                         .bytes);
        Row row = item("Monitor", device.description.isEmpty() ? Words::tr("Monitor") : device.description,
                       withAbsence(device, identity ? identity->name : QString()));
        if (identity)
            addIdentity(row, *identity);
        top.add(std::move(row));
    }
    return top;
}

Row mouseRow(Machine &machine)
{
    return inputRow(machine, section(SYSTEMINFO_LABEL("Mouse"), QStringLiteral("SysInfoMouse16.png")),
                    "Mouse", QStringLiteral("mouhid"), mouseClass, Words::tr("Standard PS/2 Mouse"));
}

Row keyboardRow(Machine &machine)
{
    return inputRow(machine, section(SYSTEMINFO_LABEL("Keyboard"), QStringLiteral("SysInfoKeyboard16.png")),
                    "Keyboard", QStringLiteral("kbdhid"), keyboardClass, Words::tr("Standard PS/2 Keyboard"));
}

} // namespace systeminfo
