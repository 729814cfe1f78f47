// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/PictureOfDay.h"

#include <chrono>

namespace wallpaper
{

struct Fetched {
    QByteArray bytes; // empty when it failed
    QString problem;  // a sentence without a full stop, then
};

// Gets files from a service: addresses that are allowed and nothing else, over at most a few redirections,
// and never more bytes or time than allowed. Blocks.
class PictureFetcher
{
public:
    static constexpr int maxRedirections = 5;
    static constexpr qint64 maxPictureBytes = 48 << 20;

    // `patience`: for one file, redirections included.
    explicit PictureFetcher(automation::AllowedAddress allowed,
                            std::chrono::milliseconds patience = std::chrono::seconds(60))
        : m_allowed(allowed),
          m_patience(patience)
    {
    }

    // `from`: the name of the service, for the problem.
    Fetched get(const QString &from, const QUrl &address, qint64 maxBytes) const;

private:
    automation::AllowedAddress m_allowed;
    std::chrono::milliseconds m_patience;
};

} // namespace wallpaper
