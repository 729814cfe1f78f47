// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/Handle.h"
#include "platform/Text.h"

#include <winioctl.h>

#include <cstring>

namespace systeminfo
{

namespace
{

// Constants from ntddstor.h that are missing in our SDK headers.
constexpr DWORD seekPenaltyProperty = 7;
constexpr DWORD deviceTemperatureProperty = 54;
constexpr DWORD deviceProtocolSpecificProperty = 50;

// Runs IOCTL_STORAGE_QUERY_PROPERTY: property, query type (0: standard) and parameters.
QByteArray ask(HANDLE drive, DWORD property, const QByteArray &parameters = {})
{
    QByteArray question(8, '\0');
    std::memcpy(question.data(), &property, sizeof property);
    question += parameters.isEmpty() ? QByteArray(4, '\0') : parameters;
    QByteArray answer(4096, '\0');
    DWORD size = 0;
    if (!DeviceIoControl(drive, IOCTL_STORAGE_QUERY_PROPERTY, question.data(),
                         static_cast<DWORD>(question.size()), answer.data(),
                         static_cast<DWORD>(answer.size()), &size, nullptr))
        return {};
    answer.truncate(static_cast<qsizetype>(size));
    return answer;
}

// The health log page of an NVMe drive: the query contains a STORAGE_PROTOCOL_SPECIFIC_DATA; so does the
// answer, after version and size.
QByteArray nvmeHealth(HANDLE drive)
{
    constexpr DWORD nvme = 3, logPage = 2, healthPage = 2, ownSize = 40, pageSize = 512;
    const DWORD parameters[10] = {nvme, logPage, healthPage, 0, ownSize, pageSize};
    QByteArray bytes(reinterpret_cast<const char *>(parameters), sizeof parameters);
    // The log page is written after the query structure.
    bytes += QByteArray(static_cast<qsizetype>(pageSize), '\0');
    const QByteArray answer = ask(drive, deviceProtocolSpecificProperty, bytes);
    constexpr qsizetype header = 8;
    return answer.size() >= header + qsizetype(ownSize + pageSize) ? answer.mid(header + ownSize, pageSize)
                                                                   : QByteArray();
}

} // namespace

// Opened without any access right: enough for these queries, and all that a user gets without elevation.
DriveAnswers WindowsMachine::drive(quint32 number)
{
    const QString path = QStringLiteral("\\\\.\\PhysicalDrive%1").arg(number);
    const platform::FileHandle handle(CreateFileW(platform::wide(path), 0, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
    if (!handle)
        return {};
    return {ask(handle.get(), StorageDeviceProperty), ask(handle.get(), seekPenaltyProperty),
            ask(handle.get(), deviceTemperatureProperty), nvmeHealth(handle.get())};
}

} // namespace systeminfo
