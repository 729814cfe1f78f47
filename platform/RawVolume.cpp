// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RawVolume.h"

#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/Wine.h"

#include <winioctl.h>

namespace platform
{

namespace
{

// The volume name without a trailing separator opens the device, with one the root folder.
FileHandle openDevice(QString name, DWORD access)
{
    if (name.endsWith(u'\\'))
        name.chop(1);
    return FileHandle(CreateFileW(wide(name), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
}

} // namespace

QString RawVolume::nameOf(const QString &path)
{
    std::wstring mountPoint(32'768, L'\0');
    wchar_t name[64];
    if (!GetVolumePathNameW(apiPath(path).c_str(), mountPoint.data(),
                            static_cast<DWORD>(mountPoint.size())) ||
        !GetVolumeNameForVolumeMountPointW(mountPoint.c_str(), name, static_cast<DWORD>(std::size(name))))
        return {};
    return fromWide(name);
}

RawVolume::RawVolume(const QString &name)
{
    if (name.isEmpty() || isWine())
        return;
    wchar_t fileSystem[MAX_PATH + 1];
    DWORD serial = 0, sectors = 0, sectorSize = 0, freeClusters = 0, clusters = 0;
    if (!GetVolumeInformationW(wide(name), nullptr, 0, &serial, nullptr, nullptr, fileSystem,
                               static_cast<DWORD>(std::size(fileSystem))) ||
        !GetDiskFreeSpaceW(wide(name), &sectors, &sectorSize, &freeClusters, &clusters))
        return;
    m_fileSystem = fromWide(fileSystem);
    m_serial = serial;
    m_clusterSize = sectors * sectorSize;
    m_totalClusters = clusters;
    m_volume = openDevice(name, GENERIC_READ | GENERIC_WRITE);
}

bool RawVolume::holds(HANDLE file) const
{
    BY_HANDLE_FILE_INFORMATION facts;
    return m_volume && GetFileInformationByHandle(file, &facts) && facts.dwVolumeSerialNumber == m_serial;
}

Medium mediumOf(const QString &path)
{
    const QString name = RawVolume::nameOf(path);
    if (name.isEmpty())
        return Medium::Unknown;
    const FileHandle device = openDevice(name, 0);
    STORAGE_PROPERTY_QUERY query = {};
    query.PropertyId = StorageDeviceSeekPenaltyProperty;
    query.QueryType = PropertyStandardQuery;
    DEVICE_SEEK_PENALTY_DESCRIPTOR answer = {};
    DWORD bytes = 0;
    if (!device ||
        !DeviceIoControl(device.get(), IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, &answer,
                         sizeof answer, &bytes, nullptr) ||
        bytes < sizeof answer)
        return Medium::Unknown;
    return answer.IncursSeekPenalty ? Medium::Seeks : Medium::DoesNotSeek;
}

} // namespace platform
