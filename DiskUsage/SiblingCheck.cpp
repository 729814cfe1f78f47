// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/SiblingCheck.h"

#include "platform/DetachedThread.h"
#include "platform/Win32Enumerator.h"

#include <QDebug>

#include <exception>
#include <mutex>
#include <system_error>
#include <utility>

namespace diskusage
{

QStringList siblingsLeftOut(const QString &folder, const core::CancelFlag &cancel)
{
    const qsizetype cut = folder.lastIndexOf(QLatin1Char('\\'));
    if (cut < 0)
        return {};
    const QStringView name = QStringView(folder).sliced(cut + 1);
    platform::Win32Enumerator enumerator;
    core::DirectoryListing listing;
    enumerator.list(folder.first(cut), listing, cancel);
    QStringList siblings;
    for (std::size_t i = 0; i < listing.size() && !cancel.isSet(); ++i) {
        const core::DirectoryEntry entry = listing.at(i);
        if (entry.isDirectory() && entry.name.size() > name.size() &&
            entry.name.startsWith(name, Qt::CaseInsensitive))
            siblings.append(folder.first(cut + 1) + entry.name.toString());
    }
    return siblings;
}

} // namespace diskusage

// What a check and its thread have in common. It outlives the check as long as the thread hangs.
struct SiblingCheck::Run {
    QStringList siblings() const;

    Finder finder;
    QStringList folders;
    core::CancelFlag cancel;
    std::mutex mutex;
    SiblingCheck *owner = nullptr; // null when it is gone
};

QStringList SiblingCheck::Run::siblings() const
try {
    QStringList found;
    for (const QString &folder : folders)
        for (const QString &sibling : finder(folder, cancel))
            if (!folders.contains(sibling, Qt::CaseInsensitive) && !found.contains(sibling))
                found.append(sibling);
    return found;
} catch (const std::exception &) { // a lack of memory: there is no note then
    return {};
}

SiblingCheck::SiblingCheck(Finder finder, QObject *parent) : QObject(parent), m_finder(std::move(finder)) {}

SiblingCheck::~SiblingCheck()
{
    if (!m_run)
        return;
    m_run->cancel.set();
    const std::lock_guard lock(m_run->mutex);
    m_run->owner = nullptr;
}

void SiblingCheck::check(const QStringList &folders)
{
    if (!m_run) {
        start(folders);
        return;
    }
    m_run->cancel.set();
    m_next = folders;
}

void SiblingCheck::start(const QStringList &folders)
{
    m_run = std::make_shared<Run>();
    m_run->finder = m_finder;
    m_run->folders = folders;
    m_run->owner = this;
    try {
        // Detached: a call on an absent server cannot be interrupted, and nobody may wait for it.
        platform::runDetached([run = m_run] {
            const QStringList siblings = run->siblings();
            // With the lock held, the owner cannot go before the answer stands in its queue.
            const std::lock_guard lock(run->mutex);
            if (SiblingCheck *owner = run->owner)
                QMetaObject::invokeMethod(
                    owner, [owner, siblings] { owner->take(siblings); }, Qt::QueuedConnection);
        });
    } catch (const std::system_error &error) {
        qDebug() << "No thread to look for siblings:" << error.what();
        // Later, as every answer.
        QMetaObject::invokeMethod(
            this, [this] { take({}); }, Qt::QueuedConnection);
    }
}

void SiblingCheck::take(const QStringList &siblings)
{
    m_run.reset();
    if (m_next)
        start(*std::exchange(m_next, std::nullopt));
    else
        emit found(siblings);
}
