// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

namespace platform
{

// The resources of an executable or library loaded as data: none of its code runs. Returned ranges are valid
// as long as this object, and are checked to be inside the file's mapping, since a damaged file may claim any
// size. One thread at a time.
class ResourceLibrary
{
public:
    // Does disk I/O. Requires an absolute path: a bare name would be searched for in folders where anyone can
    // write.
    explicit ResourceLibrary(const QString &path);

    bool isLoaded() const { return bool(m_library); }
    // The Windows error code if it could not be loaded.
    quint32 error() const { return m_error; }

    // Numbered icon groups; named ones are not listed.
    QList<quint32> iconGroupIds() const;
    std::optional<QByteArrayView> iconGroup(quint32 id) const;
    std::optional<QByteArrayView> icon(quint32 id) const;

private:
    std::optional<QByteArrayView> resource(quint32 id, const wchar_t *type) const;

    Library m_library;
    quint32 m_error = 0;
};

} // namespace platform
