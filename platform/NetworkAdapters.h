// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace platform
{

// A network adapter of this machine and how it is set up.
struct NetworkAdapter {
    QString name; // as the user knows it: "Ethernet"
    bool isTunnel = false;
    bool isConnected = false;
    bool getsAddress = false;  // from a DHCP server
    quint64 bitsPerSecond = 0; // 0: unknown
    QStringList addresses;     // IPv4 and IPv6
    QStringList gateways;
    QStringList nameServers;
    QString hardwareAddress; // "00:1a:2b:3c:4d:5e"; empty where there is none
};

// All but the loopback ones. Empty when Windows does not tell. Any thread; a matter of milliseconds.
std::optional<std::vector<NetworkAdapter>> networkAdapters();

} // namespace platform
