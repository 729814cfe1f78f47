// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/ThumbnailFile.h"

#include "imaging/engine/ThumbnailStore.h"
#include "platform/Guard.h"
#include "platform/Paths.h"

#include <QDir>
#include <QUuid>

#include <utility>

namespace imaging
{

void ThumbnailFile::clearLeftovers(const QString &temporaryFolder)
{
    const QString root = QDir::toNativeSeparators(temporaryFolder);
    const QDir folder(ThumbnailStore::folder(temporaryFolder));
    for (const QString &name : folder.entryList({QStringLiteral("Lookalikes-*.thumbnails")}, QDir::Files)) {
        if (ThumbnailStore::produced())
            return; // the rest may belong to this run; closing the window removes all of them
        platform::eraseOwn(root, QDir::toNativeSeparators(folder.filePath(name)));
    }
}

ThumbnailFile::ThumbnailFile(const QString &temporaryFolder)
    : m_temporaryFolder(temporaryFolder),
      m_spool(m_file)
{
    const QString folder = ThumbnailStore::folder(temporaryFolder);
    if (!QDir().mkpath(folder) || !platform::isInside(temporaryFolder, folder))
        return;
    m_file.setFileName(
        folder +
        QStringLiteral("/Lookalikes-%1.thumbnails").arg(QUuid::createUuid().toString(QUuid::WithoutBraces)));
    // Recorded before the file is created, so that nothing is left behind whenever the window closes.
    ThumbnailStore::noteProduced();
    m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly);
}

ThumbnailFile::~ThumbnailFile()
{
    m_file.close();
    if (m_file.fileName().isEmpty())
        return;
    const QString root = QDir::toNativeSeparators(m_temporaryFolder);
    platform::eraseOwn(root, QDir::toNativeSeparators(m_file.fileName()));
    // If the window was closed during a scan, it could not remove these. The folder is only removed if it is
    // empty.
    platform::eraseOwn(root, QDir::toNativeSeparators(ThumbnailStore::folder(m_temporaryFolder)));
}

qint64 ThumbnailFile::store(const QImage &thumbnail)
{
    return m_file.isOpen() ? m_spool.store(thumbnail) : noThumbnail;
}

void ThumbnailFile::close(std::vector<qint64> kept)
{
    if (!m_file.isOpen())
        return;
    m_file.resize(m_spool.keepOnly(std::move(kept)));
    m_file.close();
}

QImage ThumbnailFile::load(qint64 thumbnail)
{
    if (thumbnail == noThumbnail || !m_file.open(QIODevice::ReadOnly))
        return {};
    QImage image = m_spool.load(thumbnail);
    m_file.close();
    return image;
}

} // namespace imaging
