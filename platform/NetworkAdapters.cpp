// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/NetworkAdapters.h"

#include "platform/Text.h"

// Must come before the next header.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

namespace platform
{

namespace
{

QString addressText(const SOCKET_ADDRESS &address)
{
    char text[INET6_ADDRSTRLEN] = {};
    const auto *any = address.lpSockaddr;
    const void *bytes = nullptr;
    if (any->sa_family == AF_INET)
        bytes = &reinterpret_cast<const sockaddr_in *>(any)->sin_addr;
    else if (any->sa_family == AF_INET6)
        bytes = &reinterpret_cast<const sockaddr_in6 *>(any)->sin6_addr;
    return bytes && inet_ntop(any->sa_family, bytes, text, sizeof text) ? QString::fromLatin1(text)
                                                                        : QString();
}

template <class Node>
QStringList addressesOf(const Node *first)
{
    QStringList texts;
    for (const Node *node = first; node; node = node->Next)
        texts.append(addressText(node->Address));
    texts.removeAll(QString());
    return texts;
}

NetworkAdapter adapterOf(const IP_ADAPTER_ADDRESSES &found)
{
    constexpr ULONG64 unknownSpeed = ~ULONG64(0);
    NetworkAdapter adapter;
    adapter.name = fromWide(found.FriendlyName);
    adapter.isTunnel = found.IfType == IF_TYPE_TUNNEL;
    adapter.isConnected = found.OperStatus == IfOperStatusUp;
    adapter.getsAddress = (found.Flags & IP_ADAPTER_DHCP_ENABLED) != 0;
    if (found.TransmitLinkSpeed != unknownSpeed)
        adapter.bitsPerSecond = found.TransmitLinkSpeed;
    adapter.addresses = addressesOf(found.FirstUnicastAddress);
    adapter.gateways = addressesOf(found.FirstGatewayAddress);
    adapter.nameServers = addressesOf(found.FirstDnsServerAddress);
    adapter.hardwareAddress =
        QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(found.PhysicalAddress),
                                       static_cast<qsizetype>(found.PhysicalAddressLength))
                                .toHex(':'));
    return adapter;
}

} // namespace

std::optional<std::vector<NetworkAdapter>> networkAdapters()
{
    constexpr ULONG flags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_INCLUDE_GATEWAYS;
    ULONG size = 16 * 1024; // initial size recommended by Microsoft
    std::vector<BYTE> buffer;
    ULONG result = ERROR_BUFFER_OVERFLOW;
    // Adapters may be added between the calls.
    for (int attempt = 0; attempt < 4 && result == ERROR_BUFFER_OVERFLOW; ++attempt) {
        buffer.resize(size);
        result = GetAdaptersAddresses(AF_UNSPEC, flags, nullptr,
                                      reinterpret_cast<IP_ADAPTER_ADDRESSES *>(buffer.data()), &size);
    }
    std::vector<NetworkAdapter> adapters;
    if (result == ERROR_NO_DATA)
        return adapters;
    if (result != ERROR_SUCCESS)
        return std::nullopt;
    for (const auto *found = reinterpret_cast<const IP_ADAPTER_ADDRESSES *>(buffer.data()); found;
         found = found->Next) {
        if (found->IfType != IF_TYPE_SOFTWARE_LOOPBACK)
            adapters.push_back(adapterOf(*found));
    }
    return adapters;
}

} // namespace platform
