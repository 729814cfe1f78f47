// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/Text.h"

#include <QDebug>

// Before the headers below.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <new>

namespace systeminfo
{

namespace
{

// Calls until the buffer is large enough, at most a few times: adapters come and go meanwhile.
template <class Call>
ULONG callWithBuffer(std::vector<BYTE> &buffer, Call call)
{
    ULONG size = static_cast<ULONG>(buffer.size());
    for (int attempt = 0; attempt < 4; ++attempt) {
        const ULONG result = call(buffer.data(), &size);
        if (result != ERROR_BUFFER_OVERFLOW)
            return result;
        buffer.resize(size);
    }
    return ERROR_BUFFER_OVERFLOW;
}

QString addressText(const SOCKET_ADDRESS &address)
{
    char text[INET6_ADDRSTRLEN] = {};
    const auto *any = address.lpSockaddr;
    const void *bytes = nullptr;
    if (any->sa_family == AF_INET)
        bytes = &reinterpret_cast<const sockaddr_in *>(any)->sin_addr;
    else if (any->sa_family == AF_INET6)
        bytes = &reinterpret_cast<const sockaddr_in6 *>(any)->sin6_addr;
    if (!bytes || !inet_ntop(any->sa_family, bytes, text, sizeof text))
        return {};
    return QString::fromLatin1(text);
}

Connection connectionOf(const IP_ADAPTER_ADDRESSES &adapter)
{
    Connection connection;
    connection.name = platform::fromWide(adapter.FriendlyName);
    connection.connected = adapter.OperStatus == IfOperStatusUp;
    constexpr ULONG64 unknownSpeed = ~ULONG64(0);
    if (adapter.TransmitLinkSpeed != unknownSpeed)
        connection.bitsPerSecond = adapter.TransmitLinkSpeed;
    for (const auto *address = adapter.FirstUnicastAddress; address; address = address->Next)
        connection.addresses << addressText(address->Address);
    connection.addresses.removeAll(QString());
    connection.hardwareAddress =
        QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(adapter.PhysicalAddress),
                                       static_cast<qsizetype>(adapter.PhysicalAddressLength))
                                .toHex(':'));
    return connection;
}

} // namespace

std::vector<Adapter> WindowsMachine::adapters()
{
    std::vector<Adapter> adapters;
    std::vector<BYTE> buffer;
    try {
        buffer.resize(sizeof(IP_ADAPTER_INFO));
        const ULONG result = callWithBuffer(buffer, [](BYTE *bytes, ULONG *size) {
            return GetAdaptersInfo(reinterpret_cast<IP_ADAPTER_INFO *>(bytes), size);
        });
        if (result != ERROR_SUCCESS)
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
    std::vector<BYTE> buffer(16 * 1024);
    const ULONG result = callWithBuffer(buffer, [](BYTE *bytes, ULONG *size) {
        return GetAdaptersAddresses(AF_UNSPEC, GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST, nullptr,
                                    reinterpret_cast<IP_ADAPTER_ADDRESSES *>(bytes), size);
    });
    if (result != ERROR_SUCCESS)
        return connections;
    const auto *adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES *>(buffer.data());
    for (; adapter; adapter = adapter->Next) {
        if (adapter->IfType != IF_TYPE_SOFTWARE_LOOPBACK)
            connections.push_back(connectionOf(*adapter));
    }
    return connections;
}

} // namespace systeminfo
