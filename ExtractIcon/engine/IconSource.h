// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconDirectory.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>

namespace icons
{

// A source of icons: the resources of a module, or an icon file. One thread at a time.
class IconSource
{
public:
    virtual ~IconSource() = default;

    // The icon numbers, in the order of the source.
    virtual QList<quint32> iconIds() = 0;
    // The directory of an icon; nullopt if it cannot be read.
    virtual std::optional<IconDirectory> directory(quint32 id) = 0;
    // The bytes of one image of that directory, valid as long as the source; nullopt if they cannot be read.
    virtual std::optional<QByteArrayView> image(const DirectoryEntry &entry) = 0;
};

// The single icon of an icon file.
class IconFileSource final : public IconSource
{
public:
    static constexpr quint32 onlyId = 0;

    explicit IconFileSource(QByteArray file);

    QList<quint32> iconIds() override;
    std::optional<IconDirectory> directory(quint32 id) override;
    std::optional<QByteArrayView> image(const DirectoryEntry &entry) override;

private:
    QByteArray m_file;
    std::optional<IconDirectory> m_directory;
};

} // namespace icons
