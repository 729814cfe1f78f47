// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

namespace platform
{

// The resources of an executable or a library, which is loaded as data: nothing of it runs. The bytes that
// are handed out live as long as this object; each range is checked to lie inside the file's mapping, since
// a damaged file may claim any size. One thread at a time.
class ResourceLibrary
{
public:
    // Disk. An absolute path: a bare name would be searched for in folders that anybody can write to.
    explicit ResourceLibrary(const QString &path);

    bool isLoaded() const { return bool(m_library); }
    // The error code of Windows when it could not be loaded.
    quint32 error() const { return m_error; }

    // Icon groups with a number; those with a name are not listed.
    QList<quint32> iconGroupIds() const;
    std::optional<QByteArrayView> iconGroup(quint32 id) const;
    std::optional<QByteArrayView> icon(quint32 id) const;

private:
    std::optional<QByteArrayView> resource(quint32 id, const wchar_t *type) const;

    Library m_library;
    quint32 m_error = 0;
};

} // namespace platform
