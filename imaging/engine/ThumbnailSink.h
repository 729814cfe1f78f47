// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

class QImage;

namespace imaging
{

// The id of a thumbnail that could not be stored.
inline constexpr qint64 noThumbnail = -1;

// Stores thumbnails as they are made, so that none stays in memory.
class ThumbnailSink
{
public:
    virtual ~ThumbnailSink() = default;
    // Called on several threads at once, in no particular order. Returns the id for loading it later;
    // noThumbnail if it could not be stored.
    virtual qint64 store(const QImage &thumbnail) = 0;
};

} // namespace imaging
