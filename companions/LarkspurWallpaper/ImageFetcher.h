// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ImageOfDay.h"

#include <chrono>

namespace wallpaper
{

struct Fetched {
    QByteArray bytes; // empty on failure
    QString problem;  // why it failed, without a full stop
};

// Downloads files from a service: only from allowed addresses, with a limited number of redirects, bytes and
// time. Blocks.
class ImageFetcher
{
public:
    static constexpr int maxRedirections = 5;
    static constexpr qint64 maxImageBytes = 48 << 20;

    // `patience`: time limit per file, including redirects.
    explicit ImageFetcher(automation::AllowedAddress allowed,
                          std::chrono::milliseconds patience = std::chrono::seconds(60))
        : m_allowed(allowed),
          m_patience(patience)
    {
    }

    // `from`: name of the service, used in error texts.
    Fetched get(const QString &from, const QUrl &address, qint64 maxBytes) const;

private:
    automation::AllowedAddress m_allowed;
    std::chrono::milliseconds m_patience;
};

} // namespace wallpaper
