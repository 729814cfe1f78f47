// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QUrl>

#include <chrono>

namespace platform
{

struct WebLimits {
    qint64 maxBytes = 0;                       // of the body
    std::chrono::milliseconds patience{0};     // for the whole answer
    std::chrono::milliseconds silence{15'000}; // for each step of it
};

struct WebAnswer {
    enum class Outcome {
        Answered,    // `status` says how
        Unreachable, // no network, no such host, or nobody there
        TimedOut,
        TooLarge,
        NotSecure, // a certificate that is not to be trusted, or no common protocol
        Failed
    };

    Outcome outcome = Outcome::Failed;
    int status = 0;
    QByteArray location; // where a redirection leads; it is not followed
    QByteArray body;
};

// One GET by Windows' own means: its proxy settings, its certificates, no cookie, no password. Blocks; any
// thread. Takes http and https alike, so the caller decides first which addresses it wants.
WebAnswer webGet(const QUrl &address, const WebLimits &limits);

} // namespace platform
