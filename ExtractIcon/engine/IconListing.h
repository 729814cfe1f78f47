// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"
#include "ExtractIcon/engine/IconSource.h"
#include "core/CancelFlag.h"

#include <QImage>
#include <QList>

#include <functional>

// Lists the icons of a source, and reads single icons.
namespace icons
{

struct IconRecord {
    quint32 id = 0;           // number of the icon group; 0 for an icon file
    QList<ImageFacts> images; // those that could be loaded, in directory order
    int representative = -1;  // index into `images`
};

// First step: reads only the directories, which takes milliseconds for thousands of icons. Icons that cannot
// be read or have no loadable image are left out.
QList<IconRecord> listIcons(IconSource &source, const core::CancelFlag &cancel);

// Second step: the image that represents an icon, no larger than `side` pixels; null if it cannot be decoded.
QImage thumbnail(IconSource &source, const IconRecord &record, int side);

// Per icon, both stored and decoded. A usual icon needs half a megabyte.
inline constexpr qint64 maxIconBytes = qint64(256) << 20;

// An icon as it is stored.
struct StoredIcon {
    IconDirectory directory; // only entries whose images could be loaded
    QList<QByteArray> bytes; // one per entry, copied from the source
};
// nullopt also for an icon of more than maxIconBytes.
std::optional<StoredIcon> readIcon(IconSource &source, quint32 id);

// Images beyond a total of maxIconBytes are not decoded.
QList<IconImage> decodeIcon(const StoredIcon &icon);

} // namespace icons
