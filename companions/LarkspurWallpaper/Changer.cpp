// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/LarkspurWallpaper/Changer.h"

#include "automation/engine/Texts.h"
#include "platform/FileReader.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <algorithm>

using namespace automation;
using Result = WallpaperAnswer::Result;

namespace wallpaper
{

namespace
{

constexpr QSize minFetchedSize(640, 360); // smaller images are unusable as wallpaper
constexpr qint64 maxOwnBytes = 256 << 20;
constexpr int maxFetched = 4; // images tried per run

// Performs one change.
class Change
{
public:
    Change(const WallpaperRequest &request, const World &world) : m_request(request), m_world(world)
    {
        m_answer.time = world.now;
        m_answer.newest = request.newest;
        m_answer.index = request.index;
    }

    WallpaperAnswer run()
    {
        if ((m_request.source == ImageSource::Own || list()) && choose() && !isThere())
            set();
        return m_answer;
    }

private:
    bool fail(const QString &reason, Result result = Result::Failed)
    {
        m_answer.result = result;
        m_answer.reason = reason;
        return false;
    }

    QString service() const { return sourceName(m_request.source); }
    qsizetype count() const
    {
        return m_request.source == ImageSource::Own ? m_request.own.size() : m_listing.pictures.size();
    }

    bool list();
    bool choose();
    bool isThere();
    void set();
    std::optional<ShownImage> obtain(int index);
    std::optional<ShownImage> fetch(const DayImage &wanted);
    std::optional<ShownImage> copyOwn(const QString &path);

    const WallpaperRequest &m_request;
    const World &m_world;
    WallpaperAnswer m_answer;
    Listing m_listing;
    QStringList m_monitors; // or a single empty name for all
    QString m_problem;      // reason of the first failure
    int m_unusable = 0;
};

bool Change::list()
{
    if (!m_request.onMetered && m_world.isMetered())
        return fail(tr("The connection is metered"), Result::Metered);
    const QUrl address =
        listingAddress(m_world.services, m_request.source, m_request.market, m_world.now.toUTC().date());
    const Fetched answer = m_world.web.get(service(), address, maxListingBytes);
    if (!answer.problem.isEmpty())
        return fail(answer.problem);
    const auto listing = parseListing(m_world.services, m_request.source, answer.bytes);
    if (!listing)
        return fail(tr("The answer of %1 cannot be read").arg(service()));
    if (listing->pictures.isEmpty())
        return fail(listing->videos > 0 ? tr("%1 has only videos at present").arg(service())
                                        : tr("%1 lists no picture").arg(service()));
    m_listing = *listing;
    m_answer.newest = listing->pictures[0].key;
    return true;
}

bool Change::choose()
{
    int index = firstIndex(m_request, count(), m_answer.newest);
    if (index < 0)
        return fail(tr("There are no pictures in your list"));
    m_monitors = m_request.perMonitor ? m_world.desktop.monitors() : QStringList();
    if (m_monitors.size() < 2)
        m_monitors = {QString()};
    const auto wanted = std::min(m_monitors.size(), count());
    qsizetype tries = m_request.source == ImageSource::Own
                          ? count()
                          : std::min<qsizetype>(count(), maxFetched + wanted - 1);
    for (; tries > 0 && m_answer.pictures.size() < wanted; --tries) {
        if (auto picture = obtain(index)) {
            if (m_answer.pictures.isEmpty())
                m_answer.index = index;
            m_answer.pictures.append(std::move(*picture));
        } else {
            ++m_unusable;
        }
        index = indexAfter(m_request, index, count());
    }
    if (m_answer.pictures.isEmpty())
        return fail(m_problem);
    // With fewer images than monitors, they are repeated.
    for (qsizetype next = 0; m_answer.pictures.size() < m_monitors.size(); ++next)
        m_answer.pictures.append(ShownImage(m_answer.pictures[next]));
    if (m_unusable == 1)
        m_answer.reason = m_problem;
    else if (m_unusable > 1)
        m_answer.reason = tr("%1 pictures cannot be used").arg(m_unusable);
    return true;
}

std::optional<ShownImage> Change::obtain(int index)
{
    return m_request.source == ImageSource::Own ? copyOwn(m_request.own[index])
                                                : fetch(m_listing.pictures[index]);
}

std::optional<ShownImage> Change::fetch(const DayImage &wanted)
{
    std::optional<ShownImage> picture = m_world.folder.find(wanted.key);
    for (auto address = wanted.addresses.begin(); !picture && address != wanted.addresses.end(); ++address) {
        const Fetched got = m_world.web.get(service(), *address, ImageFetcher::maxImageBytes);
        QString problem = got.problem;
        if (problem.isEmpty() && imageSuffix(got.bytes).isEmpty())
            problem = tr("what %1 sent is no picture").arg(service());
        if (problem.isEmpty())
            picture = m_world.folder.add(wanted.key, got.bytes, minFetchedSize, problem);
        if (!picture && m_problem.isEmpty())
            m_problem = QStringLiteral("\"%1\": %2").arg(wanted.title, problem);
    }
    if (picture) {
        picture->title = wanted.title;
        picture->credit = wanted.credit;
        picture->page = wanted.page;
    }
    return picture;
}

std::optional<ShownImage> Change::copyOwn(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const auto file = QFileInfo(path).isAbsolute() ? platform::openShared(path) : nullptr;
    QString problem;
    std::optional<ShownImage> picture;
    if (!file)
        problem = tr("it is not there or cannot be opened");
    else if (file->size() > maxOwnBytes)
        problem = tr("it is too large");
    if (problem.isEmpty()) {
        const QByteArray bytes = file->readAll();
        const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).left(12).toHex();
        const QString key = QStringLiteral("own-") + QString::fromLatin1(hash);
        picture = m_world.folder.find(key);
        if (!picture)
            picture = m_world.folder.add(key, bytes, {}, problem);
    }
    if (picture)
        picture->title = QFileInfo(path).completeBaseName();
    else if (m_problem.isEmpty())
        m_problem = QStringLiteral("\"%1\": %2").arg(name, problem);
    return picture;
}

bool Change::isThere()
{
    for (qsizetype i = 0; i < m_monitors.size(); ++i) {
        if (m_world.desktop.picture(m_monitors[i]).compare(m_answer.pictures[i].file, Qt::CaseInsensitive) !=
            0)
            return false;
    }
    m_answer.result = Result::Same;
    return true;
}

void Change::set()
{
    if (!Former(m_world.desktop, m_world.folder).note()) {
        fail(tr("The former wallpaper could not be noted, so nothing was changed"));
        return;
    }
    QStringList before;
    for (const QString &monitor : m_monitors)
        before.append(m_world.desktop.picture(monitor));
    const int position = m_world.desktop.position();
    m_world.desktop.setPosition(platform::wallpaperFills);
    for (qsizetype i = 0; i < m_monitors.size(); ++i) {
        if (m_world.desktop.setPicture(m_monitors[i], m_answer.pictures[i].file))
            continue;
        for (qsizetype back = 0; back < i; ++back)
            m_world.desktop.setPicture(m_monitors[back], before[back]);
        m_world.desktop.setPosition(position);
        m_answer.pictures.clear();
        fail(tr("Windows refused the picture"));
        return;
    }
    m_answer.result = Result::Changed;
    m_world.folder.write(shownFile, answerText(m_answer));
    m_world.folder.tidy(m_answer.pictures);
}

WallpaperAnswer restore(const World &world)
{
    WallpaperAnswer answer{.time = world.now};
    bool done = false;
    answer.reason = Former(world.desktop, world.folder).restore(done);
    answer.result = done ? Result::Restored : Result::Failed;
    if (done)
        world.folder.remove(shownFile);
    return answer;
}

} // namespace

WallpaperAnswer serve(const WallpaperRequest &request, const World &world)
{
    return request.restore ? restore(world) : Change(request, world).run();
}

} // namespace wallpaper
