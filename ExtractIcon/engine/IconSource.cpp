// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/IconSource.h"

#include <algorithm>
#include <utility>

namespace icons
{

IconFileSource::IconFileSource(QByteArray file) : m_file(std::move(file)), m_directory(parseIconFile(m_file))
{
}

QList<quint32> IconFileSource::iconIds()
{
    // If every entry points outside the file, there is no icon.
    const bool any = m_directory && std::ranges::any_of(m_directory->entries, [this](const auto &entry) {
                         return imageBytes(m_file, entry).has_value();
                     });
    return any ? QList<quint32>{onlyId} : QList<quint32>{};
}

std::optional<IconDirectory> IconFileSource::directory(quint32)
{
    return m_directory;
}

std::optional<QByteArrayView> IconFileSource::image(const DirectoryEntry &entry)
{
    return imageBytes(m_file, entry);
}

} // namespace icons
