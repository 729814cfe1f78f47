// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/Com.h"
#include "platform/Drives.h"
#include "platform/Icons.h"
#include "platform/KnownFolders.h"
#include "platform/Text.h"
#include "platform/VersionText.h"

#include <powrprof.h>
#include <winspool.h>

#include <cfgmgr32.h>

#include <vector>

namespace systeminfo
{

using platform::fromWide;
using platform::wide;

struct WindowsMachine::Apartment {
    platform::ComScope com;
};

WindowsMachine::WindowsMachine(const core::CancelFlag &cancel)
    : m_cancel(cancel),
      m_apartment(std::make_unique<Apartment>()),
      m_wmi(platform::windowsWmiCalls(), cancel)
{
}

WindowsMachine::~WindowsMachine() = default;

MemoryStatus WindowsMachine::memory()
{
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status; // 64
    if (!GlobalMemoryStatusEx(&status))
        return {};
    return {status.ullTotalPhys, status.ullAvailPhys, status.ullTotalPageFile, status.ullAvailPageFile};
}

PowerStatus WindowsMachine::power()
{
    PowerStatus power;
    SYSTEM_POWER_STATUS status = {};
    if (GetSystemPowerStatus(&status)) {
        power.read = true;
        power.acLine = status.ACLineStatus;
        power.batteryFlag = status.BatteryFlag;
        power.lifePercent = status.BatteryLifePercent;
        power.lifeSeconds = static_cast<qint32>(status.BatteryLifeTime);
        power.fullLifeSeconds = static_cast<qint32>(status.BatteryFullLifeTime);
    }
    SYSTEM_POWER_CAPABILITIES capabilities = {};
    if (GetPwrCapabilities(&capabilities)) {
        power.capabilitiesRead = true;
        power.throttling = capabilities.ProcessorThrottle;
        power.minimumThrottle = capabilities.ProcessorMinThrottle;
        power.maximumThrottle = capabilities.ProcessorMaxThrottle;
    }
    return power;
}

QSize WindowsMachine::primaryScreen()
{
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

std::vector<Volume> WindowsMachine::fixedVolumes()
{
    std::vector<Volume> volumes;
    for (const QString &root : platform::driveRoots()) {
        if (GetDriveTypeW(wide(root)) != DRIVE_FIXED || stopRequested())
            continue;
        Volume volume{.root = root};
        wchar_t label[MAX_PATH + 1] = {};
        if (GetVolumeInformationW(wide(root), label, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0))
            volume.label = fromWide(label);
        ULARGE_INTEGER total = {};
        ULARGE_INTEGER available = {};
        if (GetDiskFreeSpaceExW(wide(root), nullptr, &total, &available)) {
            volume.totalBytes = total.QuadPart;
            volume.freeBytes = available.QuadPart;
        }
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

// Level 4 reads the registry only and does not contact print servers.
QStringList WindowsMachine::printers()
{
    constexpr DWORD level = 4;
    constexpr DWORD which = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
    DWORD size = 0;
    DWORD count = 0;
    EnumPrintersW(which, nullptr, level, nullptr, 0, &size, &count);
    std::vector<BYTE> buffer(size);
    if (size == 0 || !EnumPrintersW(which, nullptr, level, buffer.data(), size, &size, &count))
        return {};
    QStringList names;
    const auto *printers = reinterpret_cast<const PRINTER_INFO_4W *>(buffer.data());
    for (DWORD i = 0; i < count; ++i)
        names << fromWide(printers[i].pPrinterName);
    return names;
}

bool WindowsMachine::isPresent(const QString &deviceInstance)
{
    QString id = deviceInstance;
    DEVINST device = 0;
    return CM_Locate_DevNodeW(&device, reinterpret_cast<DEVINSTID_W>(id.data()), CM_LOCATE_DEVNODE_NORMAL) ==
           CR_SUCCESS;
}

QString WindowsMachine::expanded(const QString &text)
{
    if (!text.contains(QLatin1Char('%')))
        return text;
    const DWORD size = ExpandEnvironmentStringsW(wide(text), nullptr, 0);
    std::vector<wchar_t> buffer(size + 1);
    return ExpandEnvironmentStringsW(wide(text), buffer.data(), size + 1) ? fromWide(buffer.data()) : text;
}

QImage WindowsMachine::smallIcon(const QString &path)
{
    return platform::smallIconOf(path);
}

// Network paths and mapped drives are not checked: an unreachable server takes a minute.
PathState WindowsMachine::pathState(const QString &path)
{
    if (path.startsWith(QStringLiteral("\\\\")) ||
        (path.size() > 1 && GetDriveTypeW(wide(path.left(2) + QLatin1Char('\\'))) == DRIVE_REMOTE))
        return PathState::NotChecked;
    return GetFileAttributesW(wide(path)) == INVALID_FILE_ATTRIBUTES ? PathState::Missing : PathState::Exists;
}

QString WindowsMachine::findProgram(const QString &name)
{
    std::vector<wchar_t> buffer(32768);
    const DWORD length =
        SearchPathW(nullptr, wide(name), L".exe", static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    return length > 0 && length < buffer.size() ? fromWide(buffer.data()) : QString();
}

QString WindowsMachine::companyName(const QString &file)
{
    return platform::versionText(file, u"CompanyName");
}

} // namespace systeminfo
