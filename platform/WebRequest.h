// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QUrl>

#include <chrono>

namespace platform
{

struct WebLimits {
    qint64 maxBytes = 0;                       // size limit of the body
    std::chrono::milliseconds patience{0};     // time limit for the whole request
    std::chrono::milliseconds silence{15'000}; // time limit for each step
};

struct WebAnswer {
    enum class Outcome {
        Answered,    // see `status`
        Unreachable, // no network, unknown host, or connection refused
        TimedOut,
        TooLarge,
        NotSecure, // untrusted certificate, or no common protocol
        Failed
    };

    Outcome outcome = Outcome::Failed;
    int status = 0;
    QByteArray location; // target of a redirect, which is not followed
    QByteArray body;
};

// A GET request through Windows' HTTP stack: its proxy settings and certificates, without cookies or
// credentials. Blocks; any thread. Accepts http and https, so the caller must check the address first.
WebAnswer webGet(const QUrl &address, const WebLimits &limits);

} // namespace platform
