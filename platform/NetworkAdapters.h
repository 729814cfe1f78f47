// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace platform
{

// A network adapter of this computer with its configuration.
struct NetworkAdapter {
    QString name; // display name: "Ethernet"
    bool isTunnel = false;
    bool isConnected = false;
    bool getsAddress = false;  // by DHCP
    quint64 bitsPerSecond = 0; // 0 if unknown
    QStringList addresses;     // IPv4 and IPv6
    QStringList gateways;
    QStringList nameServers;
    QString hardwareAddress; // "00:1a:2b:3c:4d:5e"; empty if there is none
};

// All adapters except loopback. nullopt if Windows does not provide the list. Any thread; takes milliseconds.
std::optional<std::vector<NetworkAdapter>> networkAdapters();

} // namespace platform
