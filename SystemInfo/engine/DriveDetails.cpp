// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/DriveDetails.h"

#include "SystemInfo/engine/Format.h"

#include <QtEndian>

namespace systeminfo
{

namespace
{

template <class Number>
std::optional<Number> at(const QByteArray &bytes, qsizetype offset)
{
    if (bytes.size() < offset + qsizetype(sizeof(Number)))
        return {};
    return qFromLittleEndian<Number>(bytes.constData() + offset);
}

// STORAGE_BUS_TYPE
QString busText(quint32 type)
{
    static constexpr const char *texts[] = {"",
                                            "SCSI",
                                            "ATAPI",
                                            "ATA",
                                            "FireWire",
                                            "SSA",
                                            "Fibre Channel",
                                            "USB",
                                            "RAID",
                                            "iSCSI",
                                            "SAS",
                                            "SATA",
                                            "SD",
                                            "MMC",
                                            "Virtual",
                                            "Virtual (file)",
                                            "Storage Spaces",
                                            "NVMe",
                                            "Storage-class memory",
                                            "UFS"};
    return type < std::size(texts) ? QString::fromLatin1(texts[type]) : QString();
}

// Version, size and sensor count; the first sensor's reading, in whole degrees Celsius, is at offset 22.
std::optional<int> temperatureOf(const QByteArray &answer)
{
    const auto count = at<quint16>(answer, 12);
    const auto celsius = at<qint16>(answer, 26);
    constexpr qint16 notReported = -32768; // the header's value for "not reported", 0x8000
    if (count.value_or(0) == 0 || !celsius || *celsius == notReported || *celsius < -60 || *celsius > 200)
        return {};
    return *celsius;
}

// The NVMe SMART / health log page, 512 bytes.
void readHealth(DriveDetails &details, const QByteArray &page)
{
    constexpr qsizetype pageSize = 512;
    constexpr int freezing = 273; // kelvin
    if (page.size() < pageSize)
        return;
    const int kelvin = *at<quint16>(page, 1);
    if (!details.celsius && kelvin > 200 && kelvin < 500)
        details.celsius = kelvin - freezing;
    const int spare = *at<quint8>(page, 3);
    if (spare <= 100)
        details.sparePercent = spare;
    details.wearPercent = *at<quint8>(page, 5);
    details.powerOnHours = *at<quint64>(page, 128);
}

} // namespace

DriveDetails readDrive(const DriveAnswers &answers)
{
    DriveDetails details;
    if (const auto bus = at<quint32>(answers.descriptor, 28))
        details.bus = busText(*bus);
    if (const auto removable = at<quint8>(answers.descriptor, 10))
        details.removable = *removable != 0;
    if (const auto seeks = at<quint8>(answers.seekPenalty, 8))
        details.medium = *seeks ? Words::tr("Hard disk") : Words::tr("Solid-state drive");
    details.celsius = temperatureOf(answers.temperature);
    readHealth(details, answers.nvmeHealth);
    return details;
}

void addDriveDetails(Row &row, const DriveAnswers &answers)
{
    const DriveDetails details = readDrive(answers);
    const auto quantity = [](auto number, const QString &unit) {
        return number ? Value::of(static_cast<qint64>(*number), unit) : Value();
    };
    row.add(fact(SYSTEMINFO_LABEL("Bus"), details.bus));
    row.add(fact(SYSTEMINFO_LABEL("Medium"), details.medium));
    row.add(fact(SYSTEMINFO_LABEL("Removable"), yesNo(details.removable)));
    row.add(fact(SYSTEMINFO_LABEL("Temperature"), quantity(details.celsius, QStringLiteral("\u00b0C"))));
    row.add(fact(SYSTEMINFO_LABEL("Wear"), quantity(details.wearPercent, QStringLiteral("%"))));
    row.add(fact(SYSTEMINFO_LABEL("Spare Capacity"), quantity(details.sparePercent, QStringLiteral("%"))));
    row.add(fact(SYSTEMINFO_LABEL("Power-On Time"), quantity(details.powerOnHours, Words::tr("hours"))));
}

} // namespace systeminfo
