// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"
#include "ExtractIcon/engine/IconSource.h"
#include "core/CancelFlag.h"

#include <QImage>
#include <QList>

#include <functional>

// Listing the icons of a source, and reading one of them whole.
namespace icons
{

struct IconRecord {
    quint32 id = 0;           // the number of the icon's group; 0 for an icon file
    QList<ImageFacts> images; // those that could be loaded, in the order of the directory
    int representative = -1;  // into `images`
};

// First the directories only, which takes milliseconds for thousands of icons: an icon that cannot be read,
// or none of whose images can be loaded, is left out.
QList<IconRecord> listIcons(IconSource &source, const core::CancelFlag &cancel);

// Then the picture that stands for an icon, no larger than `side` pixels; null when it cannot be decoded.
QImage thumbnail(IconSource &source, const IconRecord &record, int side);

// For one icon, as stored or decoded. A usual one takes half a megabyte.
inline constexpr qint64 maxIconBytes = qint64(256) << 20;

// One icon as it is stored.
struct StoredIcon {
    IconDirectory directory; // entries of the images that could be loaded
    QList<QByteArray> bytes; // one an entry, copied out of the source
};
// Empty also for an icon of more than maxIconBytes.
std::optional<StoredIcon> readIcon(IconSource &source, quint32 id);

// Images beyond maxIconBytes in all are not decoded.
QList<IconImage> decodeIcon(const StoredIcon &icon);

} // namespace icons
