// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/machine/WindowsNetwork.h"

#include "platform/AbandonableTask.h"
#include "platform/Com.h"
#include "platform/NetworkAdapters.h"
#include "platform/Text.h"

#include <QElapsedTimer>
#include <QThread>

// Must come before the next headers.
#include <winsock2.h>
#include <ws2tcpip.h>

#include <initguid.h> // defines CLSID_NetworkListManager, which no import library contains

#include <netlistmgr.h>
#include <windns.h>
#include <winhttp.h>

#include <memory>
#include <mutex>

namespace repair
{

namespace
{

constexpr int maxLookupTime = 8000; // ms
constexpr int maxConnectTime = 6000;
constexpr int poll = 50;

struct SocketTraits {
    using Raw = SOCKET;
    static Raw none() noexcept { return INVALID_SOCKET; }
    static void close(Raw raw) noexcept { closesocket(raw); }
};
using Socket = platform::UniqueHandle<SocketTraits>;

struct GlobalMemoryTraits {
    using Raw = wchar_t *;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { GlobalFree(raw); }
};
using GlobalText = platform::UniqueHandle<GlobalMemoryTraits>;

// Network calls cannot be cancelled: a call that takes too long is abandoned on its own thread. While too
// many abandoned ones still hang, the next one waits for its turn, and counts as unanswered if none comes.
template <class Answer>
std::optional<Answer> within(int milliseconds, const core::CancelFlag &cancel, std::function<Answer()> ask)
{
    struct Shared {
        std::mutex guard;
        std::optional<Answer> answer;
    };
    const auto shared = std::make_shared<Shared>();
    const std::function<void()> task = [shared, ask = std::move(ask)] {
        Answer answer = ask();
        const std::lock_guard lock(shared->guard);
        shared->answer = std::move(answer);
    };
    platform::AbandonableTask call;
    bool started = false;
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < milliseconds && !cancel.isSet(); QThread::msleep(poll)) {
        started = started || call.start(task);
        const std::lock_guard lock(shared->guard);
        if (shared->answer)
            return shared->answer;
    }
    return std::nullopt;
}

// Whether a connected network has a captive portal that requires signing in.
bool wantsSignIn(INetworkListManager *manager)
{
    platform::ComPointer<IEnumNetworks> networks;
    if (FAILED(manager->GetNetworks(NLM_ENUM_NETWORK_CONNECTED, networks.put())) || !networks)
        return false;
    platform::ComPointer<INetwork> network;
    ULONG count = 0;
    while (networks->Next(1, network.put(), &count) == S_OK && count == 1) {
        platform::ComPointer<IPropertyBag> properties;
        if (FAILED(network->QueryInterface(IID_IPropertyBag, properties.putVoid())))
            continue;
        for (const wchar_t *name : {L"NA_InternetConnectivityV4", L"NA_InternetConnectivityV6"}) {
            VARIANT value = {};
            value.vt = VT_UI4;
            if (SUCCEEDED(properties->Read(name, &value, nullptr)) && value.vt == VT_UI4 &&
                (value.ulVal & NLM_INTERNET_CONNECTIVITY_WEBHIJACK) != 0)
                return true;
        }
    }
    return false;
}

bool connectTo(const QString &host, quint16 port)
{
    WSADATA data = {};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        return false;
    ADDRINFOW hints = {};
    hints.ai_socktype = SOCK_STREAM;
    PADDRINFOW addresses = nullptr;
    bool connected = false;
    if (GetAddrInfoW(platform::wide(host), platform::wide(QString::number(port)), &hints, &addresses) == 0) {
        for (PADDRINFOW address = addresses; address && !connected; address = address->ai_next) {
            const Socket socket(::socket(address->ai_family, SOCK_STREAM, IPPROTO_TCP));
            connected = socket &&
                        ::connect(socket.get(), address->ai_addr, static_cast<int>(address->ai_addrlen)) == 0;
        }
        FreeAddrInfoW(addresses);
    }
    WSACleanup();
    return connected;
}

} // namespace

std::optional<QList<Adapter>> WindowsNetwork::adapters()
{
    const auto found = platform::networkAdapters();
    if (!found)
        return std::nullopt;
    QList<Adapter> adapters;
    for (const platform::NetworkAdapter &each : *found) {
        if (!each.isTunnel)
            adapters.append({each.name, each.isConnected, each.getsAddress, each.addresses, each.gateways,
                             each.nameServers});
    }
    return adapters;
}

Connectivity WindowsNetwork::connectivity()
{
    const platform::ComScope com;
    platform::ComPointer<INetworkListManager> manager;
    NLM_CONNECTIVITY state = NLM_CONNECTIVITY_DISCONNECTED;
    if (FAILED(CoCreateInstance(CLSID_NetworkListManager, nullptr, CLSCTX_ALL, IID_INetworkListManager,
                                manager.putVoid())) ||
        FAILED(manager->GetConnectivity(&state)))
        return Connectivity::Unknown;
    if (wantsSignIn(manager.get()))
        return Connectivity::SignIn;
    if ((state & (NLM_CONNECTIVITY_IPV4_INTERNET | NLM_CONNECTIVITY_IPV6_INTERNET)) != 0)
        return Connectivity::Internet;
    return state == NLM_CONNECTIVITY_DISCONNECTED ? Connectivity::None : Connectivity::Local;
}

Proxy WindowsNetwork::proxy()
{
    WINHTTP_CURRENT_USER_IE_PROXY_CONFIG config = {};
    if (!WinHttpGetIEProxyConfigForCurrentUser(&config))
        return {};
    const GlobalText script(config.lpszAutoConfigUrl), server(config.lpszProxy),
        bypass(config.lpszProxyBypass);
    Proxy proxy;
    if (server)
        proxy.server = platform::fromWide(server.get());
    if (script)
        proxy.script = platform::fromWide(script.get());
    return proxy;
}

Lookup WindowsNetwork::lookUp(const QString &host, const core::CancelFlag &cancel)
{
    QElapsedTimer clock;
    clock.start();
    const auto status = within<DNS_STATUS>(maxLookupTime, cancel, [host] {
        PDNS_RECORD records = nullptr;
        const DNS_STATUS found =
            DnsQuery_W(platform::wide(host), DNS_TYPE_A, DNS_QUERY_BYPASS_CACHE | DNS_QUERY_NO_HOSTS_FILE,
                       nullptr, &records, nullptr);
        DnsRecordListFree(records, DnsFreeRecordList);
        return found;
    });
    Lookup lookup;
    lookup.answered = status == ERROR_SUCCESS;
    lookup.milliseconds = static_cast<int>(clock.elapsed());
    if (status && !lookup.answered)
        lookup.problem = qt_error_string(static_cast<int>(*status)).trimmed();
    return lookup;
}

bool WindowsNetwork::connects(const QString &host, quint16 port, const core::CancelFlag &cancel)
{
    return within<bool>(maxConnectTime, cancel, [host, port] { return connectTo(host, port); })
        .value_or(false);
}

} // namespace repair
