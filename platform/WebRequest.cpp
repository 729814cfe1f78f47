// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/WebRequest.h"

#include "platform/Handle.h"
#include "platform/Text.h"

#include <algorithm>
#include <string>

#include <winhttp.h>

namespace platform
{

namespace
{

using Clock = std::chrono::steady_clock;
using Outcome = WebAnswer::Outcome;

struct InternetTraits {
    using Raw = HINTERNET;
    static Raw none() noexcept { return nullptr; }
    static void close(Raw raw) noexcept { WinHttpCloseHandle(raw); }
};
using InternetHandle = UniqueHandle<InternetTraits>;

constexpr wchar_t agentName[] = L"FernlightLarkspur";
// For Windows 8.1 and Windows 11; missing in some headers.
constexpr DWORD automaticProxy = 4;
constexpr DWORD tls12 = 0x800, tls13 = 0x2000;
constexpr DWORD socketTimedOut = 10060; // WSAETIMEDOUT, which Wine passes through
constexpr DWORD pieceSize = 64 * 1024;

Outcome outcomeOf(DWORD error)
{
    switch (error) {
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
    case ERROR_WINHTTP_CANNOT_CONNECT:
    case ERROR_WINHTTP_CONNECTION_ERROR:
        return Outcome::Unreachable;
    case ERROR_WINHTTP_TIMEOUT:
    case socketTimedOut:
        return Outcome::TimedOut;
    case ERROR_WINHTTP_SECURE_FAILURE:
    case ERROR_WINHTTP_SECURE_CHANNEL_ERROR:
    case ERROR_WINHTTP_CLIENT_AUTH_CERT_NEEDED:
        return Outcome::NotSecure;
    default:
        return Outcome::Failed;
    }
}

InternetHandle openSession(const WebLimits &limits)
{
    InternetHandle session(
        WinHttpOpen(agentName, automaticProxy, WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0));
    if (!session)
        session.reset(WinHttpOpen(agentName, WINHTTP_ACCESS_TYPE_DEFAULT_PROXY, WINHTTP_NO_PROXY_NAME,
                                  WINHTTP_NO_PROXY_BYPASS, 0));
    const auto silence = static_cast<int>(std::min(limits.silence, limits.patience).count());
    WinHttpSetTimeouts(session.get(), silence, silence, silence, silence);
    auto untilHeaders = static_cast<DWORD>(silence); // has a default limit of more than a minute
    WinHttpSetOption(session.get(), WINHTTP_OPTION_RECEIVE_RESPONSE_TIMEOUT, &untilHeaders,
                     sizeof untilHeaders);
    DWORD protocols = tls12 | tls13;
    if (!WinHttpSetOption(session.get(), WINHTTP_OPTION_SECURE_PROTOCOLS, &protocols, sizeof protocols)) {
        protocols = tls12; // for a Windows version without TLS 1.3
        WinHttpSetOption(session.get(), WINHTTP_OPTION_SECURE_PROTOCOLS, &protocols, sizeof protocols);
    }
    return session;
}

DWORD numberHeader(const InternetHandle &request, DWORD header)
{
    DWORD value = 0, bytes = sizeof value;
    WinHttpQueryHeaders(request.get(), header | WINHTTP_QUERY_FLAG_NUMBER, WINHTTP_HEADER_NAME_BY_INDEX,
                        &value, &bytes, WINHTTP_NO_HEADER_INDEX);
    return value;
}

QByteArray locationHeader(const InternetHandle &request)
{
    DWORD bytes = 0;
    WinHttpQueryHeaders(request.get(), WINHTTP_QUERY_LOCATION, WINHTTP_HEADER_NAME_BY_INDEX, nullptr, &bytes,
                        WINHTTP_NO_HEADER_INDEX);
    std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
    if (!WinHttpQueryHeaders(request.get(), WINHTTP_QUERY_LOCATION, WINHTTP_HEADER_NAME_BY_INDEX, text.data(),
                             &bytes, WINHTTP_NO_HEADER_INDEX))
        return {};
    return fromWide(text.c_str()).toUtf8();
}

Outcome readBody(const InternetHandle &request, const WebLimits &limits, Clock::time_point end,
                 QByteArray &body)
{
    if (numberHeader(request, WINHTTP_QUERY_CONTENT_LENGTH) > limits.maxBytes)
        return Outcome::TooLarge;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    while (true) {
        // Queried first: reading more than is available would wait for the rest, however slow it is.
        DWORD available = 0, read = 0;
        if (!WinHttpQueryDataAvailable(request.get(), &available) ||
            (available > 0 &&
             !WinHttpReadData(request.get(), piece.data(), std::min(available, pieceSize), &read)))
            return outcomeOf(GetLastError());
        if (read == 0)
            return Outcome::Answered;
        if (body.size() + static_cast<qsizetype>(read) > limits.maxBytes)
            return Outcome::TooLarge;
        if (Clock::now() > end) // for a server that keeps sending single bytes
            return Outcome::TimedOut;
        body.append(piece.constData(), static_cast<qsizetype>(read));
    }
}

} // namespace

WebAnswer webGet(const QUrl &address, const WebLimits &limits)
{
    const auto end = Clock::now() + limits.patience;
    WebAnswer answer;
    const bool secure = address.scheme() == QLatin1StringView("https");
    const InternetHandle session = openSession(limits);
    const QString host = address.host(QUrl::FullyEncoded);
    const auto port = static_cast<INTERNET_PORT>(address.port(secure ? 443 : 80));
    const InternetHandle connection(session ? WinHttpConnect(session.get(), wide(host), port, 0) : nullptr);
    const QString path = address.toString(QUrl::FullyEncoded | QUrl::RemoveScheme | QUrl::RemoveAuthority |
                                          QUrl::RemoveFragment);
    const InternetHandle request(
        connection ? WinHttpOpenRequest(connection.get(), L"GET", wide(path), nullptr, WINHTTP_NO_REFERER,
                                        WINHTTP_DEFAULT_ACCEPT_TYPES, secure ? WINHTTP_FLAG_SECURE : 0)
                   : nullptr);
    DWORD without = WINHTTP_DISABLE_REDIRECTS | WINHTTP_DISABLE_COOKIES | WINHTTP_DISABLE_AUTHENTICATION;
    if (!request ||
        !WinHttpSetOption(request.get(), WINHTTP_OPTION_DISABLE_FEATURE, &without, sizeof without))
        return answer;
    if (!WinHttpSendRequest(request.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0, WINHTTP_NO_REQUEST_DATA, 0, 0,
                            0) ||
        !WinHttpReceiveResponse(request.get(), nullptr)) {
        answer.outcome = outcomeOf(GetLastError());
        return answer;
    }
    answer.status = static_cast<int>(numberHeader(request, WINHTTP_QUERY_STATUS_CODE));
    answer.location = locationHeader(request);
    answer.outcome = answer.status == 200 ? readBody(request, limits, end, answer.body) : Outcome::Answered;
    return answer;
}

} // namespace platform
