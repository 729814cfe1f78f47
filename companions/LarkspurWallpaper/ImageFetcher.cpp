// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/LarkspurWallpaper/ImageFetcher.h"

#include "automation/engine/Texts.h"
#include "platform/WebRequest.h"

using automation::tr;

namespace wallpaper
{

namespace
{

using platform::WebAnswer;

QString problemOf(const QString &from, const WebAnswer &answer)
{
    switch (answer.outcome) {
    case WebAnswer::Outcome::Unreachable:
        return tr("%1 cannot be reached").arg(from);
    case WebAnswer::Outcome::TimedOut:
        return tr("%1 did not answer in time").arg(from);
    case WebAnswer::Outcome::TooLarge:
        return tr("%1 sent more than a picture may have").arg(from);
    case WebAnswer::Outcome::NotSecure:
        return tr("The connection to %1 is not secure").arg(from);
    case WebAnswer::Outcome::Failed:
        return tr("The connection to %1 failed").arg(from);
    case WebAnswer::Outcome::Answered:
        break;
    }
    if (answer.status == 429)
        return tr("%1 gives no more pictures for a while").arg(from);
    return tr("%1 answered with error %2").arg(from).arg(answer.status);
}

bool isRedirection(int status)
{
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

} // namespace

Fetched ImageFetcher::get(const QString &from, const QUrl &address, qint64 maxBytes) const
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + m_patience;
    QUrl at = address;
    for (int hop = 0; hop <= maxRedirections && m_allowed(at); ++hop) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            return {{}, problemOf(from, {WebAnswer::Outcome::TimedOut})};
        WebAnswer answer = platform::webGet(at, {maxBytes, left});
        if (answer.outcome == WebAnswer::Outcome::Answered && isRedirection(answer.status)) {
            const auto to = automation::redirected(at, answer.location, m_allowed);
            at = to.value_or(QUrl());
            continue;
        }
        if (answer.outcome != WebAnswer::Outcome::Answered || answer.status != 200)
            return {{}, problemOf(from, answer)};
        if (answer.body.isEmpty())
            return {{}, tr("%1 sent nothing").arg(from)};
        return {std::move(answer.body), {}};
    }
    return {{}, tr("%1 leads to an address that is not to be trusted").arg(from)};
}

} // namespace wallpaper
