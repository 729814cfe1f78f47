// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

class QImage;

namespace imaging
{

// What stands for a thumbnail that could not be kept.
inline constexpr qint64 noThumbnail = -1;

// Takes thumbnails as they are made, so that none stays in memory.
class ThumbnailSink
{
public:
    virtual ~ThumbnailSink() = default;
    // Called on several threads at once, in no particular order. Returns the number by which the thumbnail is
    // loaded later, noThumbnail when it cannot be kept.
    virtual qint64 store(const QImage &thumbnail) = 0;
};

} // namespace imaging
