// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/NetworkAdapters.h"

#include <QDebug>

// Must come before the next header.
#include <winsock2.h>

#include <iphlpapi.h>

#include <new>

namespace systeminfo
{

namespace
{

// Limited retries: adapters may be added between the calls.
ULONG readAdapters(std::vector<BYTE> &buffer)
{
    ULONG size = sizeof(IP_ADAPTER_INFO);
    ULONG result = ERROR_BUFFER_OVERFLOW;
    for (int attempt = 0; attempt < 4 && result == ERROR_BUFFER_OVERFLOW; ++attempt) {
        buffer.resize(size);
        result = GetAdaptersInfo(reinterpret_cast<IP_ADAPTER_INFO *>(buffer.data()), &size);
    }
    return result;
}

} // namespace

std::vector<Adapter> WindowsMachine::adapters()
{
    std::vector<Adapter> adapters;
    std::vector<BYTE> buffer;
    try {
        if (readAdapters(buffer) != ERROR_SUCCESS)
            return adapters;
    } catch (const std::bad_alloc &) {
        qDebug("Error allocating memory needed to call GetAdaptersinfo\n");
        return adapters;
    }
    for (const auto *info = reinterpret_cast<const IP_ADAPTER_INFO *>(buffer.data()); info; info = info->Next)
        adapters.push_back({QString::fromLocal8Bit(info->Description), info->Type,
                            QString::fromLatin1(info->IpAddressList.IpAddress.String)});
    return adapters;
}

std::vector<Connection> WindowsMachine::connections()
{
    std::vector<Connection> connections;
    for (const platform::NetworkAdapter &each :
         platform::networkAdapters().value_or(std::vector<platform::NetworkAdapter>()))
        connections.push_back(
            {each.name, each.isConnected, each.bitsPerSecond, each.addresses, each.hardwareAddress});
    return connections;
}

} // namespace systeminfo
