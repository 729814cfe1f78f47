// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Storage.h"

#include "SystemInfo/engine/DriveDetails.h"
#include "SystemInfo/engine/Format.h"
#include "SystemInfo/engine/Pages.h"
#include "SystemInfo/engine/WmiNotice.h"

#include <QDebug>

namespace systeminfo
{

namespace
{

const QString diskIcon = QStringLiteral("SysInfoDisk16.png");
const QString deviceId = QStringLiteral("DeviceID");
constexpr quint32 keyIsTooShort = 0x80041017; // WBEM_E_INVALID_QUERY

core::WmiQuery diskQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_DiskDrive"),
            .properties = {QStringLiteral("Caption"),
                           QStringLiteral("CapabilityDescriptions"),
                           QStringLiteral("CompressionMethod"),
                           QStringLiteral("Description"),
                           deviceId,
                           QStringLiteral("FirmwareRevision"),
                           QStringLiteral("InstallDate"),
                           QStringLiteral("Manufacturer"),
                           QStringLiteral("MediaType"),
                           QStringLiteral("Model"),
                           QStringLiteral("Name"),
                           QStringLiteral("NeedsCleaning"),
                           QStringLiteral("PowerManagementSupported"),
                           QStringLiteral("SerialNumber"),
                           QStringLiteral("Size"),
                           QStringLiteral("Status"),
                           QStringLiteral("TotalCylinders"),
                           QStringLiteral("TotalHeads"),
                           QStringLiteral("TotalSectors"),
                           QStringLiteral("BytesPerSector"),
                           QStringLiteral("TotalTracks"),
                           QStringLiteral("TracksPerCylinder"),
                           QStringLiteral("Index")}};
}

core::WmiQuery volumeQuery()
{
    return {.text = QStringLiteral("SELECT * FROM Win32_LogicalDisk"),
            .properties = {deviceId, QStringLiteral("VolumeName"), QStringLiteral("VolumeSerialNumber"),
                           QStringLiteral("FileSystem"), QStringLiteral("Compressed"),
                           QStringLiteral("SupportsDiskQuotas"),
                           QStringLiteral("SupportsFileBasedCompression"), QStringLiteral("FreeSpace"),
                           QStringLiteral("Size")}};
}

core::WmiQuery walkQuery(const QString &text)
{
    return {.text = text, .properties = {deviceId}, .failure = QStringLiteral("Query for processes failed.")};
}

Value sizeOf(const core::WmiRow &row, const QString &property)
{
    const auto bytes = row.unsignedInteger(property);
    return bytes ? gigabytes(wholeGigabytes(*bytes)) : Value();
}

Row partitionRow(qsizetype number, const core::WmiRow &volume, const IconOf &icons)
{
    const QString drive = volume.text(deviceId);
    Row row = numbered(SYSTEMINFO_LABEL("Partition #"), number, drive);
    row.image = icons(drive + QLatin1Char('\\'));
    row.add(fact(SYSTEMINFO_LABEL("Volume Name"), volume.text(QStringLiteral("VolumeName"))));
    row.add(fact(SYSTEMINFO_LABEL("Volume Serial Number"), volume.text(QStringLiteral("VolumeSerialNumber")),
                 Privacy::Serial));
    row.add(fact(SYSTEMINFO_LABEL("File System"), volume.text(QStringLiteral("FileSystem"))));
    row.add(fact(SYSTEMINFO_LABEL("Compressed"), yesNo(volume.flag(QStringLiteral("Compressed")))));
    row.add(fact(SYSTEMINFO_LABEL("Supports Disk Quotas"),
                 yesNo(volume.flag(QStringLiteral("SupportsDiskQuotas")))));
    row.add(fact(SYSTEMINFO_LABEL("Supports File Based Compression"),
                 yesNo(volume.flag(QStringLiteral("SupportsFileBasedCompression")))));
    row.add(fact(SYSTEMINFO_LABEL("Free Space"), sizeOf(volume, QStringLiteral("FreeSpace"))));
    row.add(fact(SYSTEMINFO_LABEL("Size"), sizeOf(volume, QStringLiteral("Size"))));
    return row;
}

void addPartitions(Row &row, const QString &disk, const std::vector<core::WmiRow> &volumes,
                   const std::vector<DiskLink> &links, const IconOf &icons)
{
    qsizetype number = 0;
    for (const DiskLink &link : links) {
        if (link.disk.compare(disk, Qt::CaseInsensitive) != 0)
            continue;
        for (const core::WmiRow &volume : volumes) {
            if (volume.text(deviceId).compare(link.volume, Qt::CaseInsensitive) == 0) {
                row.add(partitionRow(number++, volume, icons));
                break;
            }
        }
    }
}

void addDiskFacts(Row &row, const core::WmiRow &disk)
{
    const auto text = [&disk](const char *property) { return disk.text(QString::fromLatin1(property)); };
    const auto count = [&disk](const char *property) {
        return decimal(disk.unsignedInteger(QString::fromLatin1(property)));
    };
    const auto flag = [&disk](const char *property) {
        return yesNo(disk.flag(QString::fromLatin1(property)));
    };
    row.add(fact(SYSTEMINFO_LABEL("Compression Method"), text("CompressionMethod")));
    row.add(fact(SYSTEMINFO_LABEL("Capabilities"),
                 disk.list(QStringLiteral("CapabilityDescriptions")).join(QStringLiteral(", "))));
    row.add(fact(SYSTEMINFO_LABEL("Firmware Revision"), text("FirmwareRevision")));
    row.add(fact(SYSTEMINFO_LABEL("Install Date"), wmiDate(text("InstallDate"))));
    row.add(fact(SYSTEMINFO_LABEL("Manufacturer"), text("Manufacturer")));
    row.add(fact(SYSTEMINFO_LABEL("Media Type"), text("MediaType")));
    row.add(fact(SYSTEMINFO_LABEL("Model"), text("Model")));
    row.add(fact(SYSTEMINFO_LABEL("Name"), text("Name")));
    row.add(fact(SYSTEMINFO_LABEL("Needs Cleaning"), flag("NeedsCleaning")));
    row.add(fact(SYSTEMINFO_LABEL("Power Management Supported"), flag("PowerManagementSupported")));
    row.add(fact(SYSTEMINFO_LABEL("Serial Number"), text("SerialNumber").trimmed(), Privacy::Serial));
    row.add(fact(SYSTEMINFO_LABEL("Size"), sizeOf(disk, QStringLiteral("Size"))));
    row.add(fact(SYSTEMINFO_LABEL("Status"), text("Status")));
    row.add(fact(SYSTEMINFO_LABEL("Total Cylinders"), count("TotalCylinders")));
    row.add(fact(SYSTEMINFO_LABEL("Total Heads"), count("TotalHeads")));
    row.add(fact(SYSTEMINFO_LABEL("Total Sectors"), count("TotalSectors")));
    row.add(fact(SYSTEMINFO_LABEL("Bytes Per Sector"), count("BytesPerSector")));
    row.add(fact(SYSTEMINFO_LABEL("Total Tracks"), count("TotalTracks")));
    row.add(fact(SYSTEMINFO_LABEL("Tracks Per Cylinder"), count("TracksPerCylinder")));
}

QStringList idsOf(Machine &machine, Page &page, const QString &query, core::WmiAnswer &answer)
{
    QStringList ids;
    answer = ask(machine, page, walkQuery(query), Words::tr("the partitions"),
                 [&ids](const core::WmiRow &row) { ids.append(row.text(deviceId)); });
    return ids;
}

QStringList partitionsOf(Machine &machine, Page &page, const QString &disk)
{
    const auto question = partitionsOfDisk(disk, true);
    if (!question) {
        machine.wmi().noteFailure(walkQuery({}), keyIsTooShort);
        return {};
    }
    Page first = page;
    core::WmiAnswer answer;
    const QStringList partitions = idsOf(machine, first, *question, answer);
    if (answer != core::WmiAnswer::Failed) {
        page = first;
        return partitions;
    }
    return idsOf(machine, page, *partitionsOfDisk(disk, false), answer);
}

std::vector<DiskLink> walk(Machine &machine, Page &page, const std::vector<core::WmiRow> &disks)
{
    std::vector<DiskLink> links;
    core::WmiAnswer answer;
    for (const core::WmiRow &disk : disks) {
        const QString id = disk.text(deviceId);
        for (const QString &partition : partitionsOf(machine, page, id)) {
            for (const QString &volume : idsOf(machine, page, volumesOfPartition(partition), answer)) {
                qDebug().noquote().nospace() << partition << " : " << volume << '\n';
                links.push_back({id, partition, volume});
            }
            if (machine.stopRequested())
                return links;
        }
    }
    return links;
}

// What the table above lacks: how the drive is attached, its kind and its health.
Row detailsRow(Machine &machine, const std::vector<core::WmiRow> &disks)
{
    Row top = section(SYSTEMINFO_LABEL("Health and Connection"), diskIcon);
    for (std::size_t i = 0; i < disks.size() && !machine.stopRequested(); ++i) {
        Row row =
            numbered(SYSTEMINFO_LABEL("Disk #"), qsizetype(i), disks[i].text(QStringLiteral("Caption")));
        const auto number = disks[i].unsignedInteger(QStringLiteral("Index"));
        addDriveDetails(row, number ? machine.drive(static_cast<quint32>(*number)) : DriveAnswers());
        top.add(std::move(row));
    }
    return top;
}

} // namespace

std::optional<QString> partitionsOfDisk(const QString &diskId, bool doubled)
{
    constexpr qsizetype prefix = 4; // "\\.\"
    if (diskId.size() < prefix)
        return {};
    QString rest = diskId.mid(prefix);
    rest.replace(QLatin1Char('\''), QStringLiteral("\\'"));
    const QString start = doubled ? QStringLiteral("\\\\\\\\.\\\\") : QStringLiteral("\\\\.\\");
    return QStringLiteral("Associators of {Win32_DiskDrive.DeviceID='") + start + rest +
           QStringLiteral("'} where AssocClass=Win32_DiskDriveToDiskPartition");
}

QString volumesOfPartition(const QString &partitionId)
{
    QString id = partitionId;
    id.replace(QLatin1Char('\''), QStringLiteral("\\'"));
    return QStringLiteral("Associators of {Win32_DiskPartition.DeviceID='") + id +
           QStringLiteral("'} where AssocClass=Win32_LogicalDiskToPartition");
}

Row storageRow(const std::vector<core::WmiRow> &disks, const std::vector<core::WmiRow> &volumes,
               const std::vector<DiskLink> &links, const IconOf &icons)
{
    Row top = section(SYSTEMINFO_LABEL("Storage"), diskIcon);
    for (std::size_t i = 0; i < disks.size(); ++i) {
        Row row =
            numbered(SYSTEMINFO_LABEL("Disk #"), qsizetype(i), disks[i].text(QStringLiteral("Caption")));
        row.icon = diskIcon;
        row.add(fact(SYSTEMINFO_LABEL("Device ID"), disks[i].text(deviceId)));
        addPartitions(row, disks[i].text(deviceId), volumes, links, icons);
        addDiskFacts(row, disks[i]);
        top.add(std::move(row));
    }
    return top;
}

Page storagePage(Machine &machine, const Publish &publish)
{
    Page page = emptyPage(PageId::Storage);
    std::vector<core::WmiRow> disks;
    std::vector<core::WmiRow> volumes;
    page.sections = {storageRow({}, {}, {}, {})};
    publish(page);
    ask(machine, page, diskQuery(), Words::tr("the disks"),
        [&disks](const core::WmiRow &row) { disks.push_back(row); });
    page.sections = {storageRow(disks, {}, {}, {})};
    publish(page);
    ask(machine, page, volumeQuery(), Words::tr("the volumes"),
        [&volumes](const core::WmiRow &row) { volumes.push_back(row); });
    page.sections = {storageRow(disks, volumes, walk(machine, page, disks),
                                [&machine](const QString &root) { return machine.smallIcon(root); })};
    publish(page);
    if (!disks.empty())
        page.sections.push_back(detailsRow(machine, disks));
    return page;
}

} // namespace systeminfo
