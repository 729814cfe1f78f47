// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/PicturePair.h"

#include "core/DirectoryEnumerator.h"
#include "imaging/DecoderPool.h"
#include "platform/FileProbe.h"

#include <algorithm>
#include <utility>

namespace
{

LoadedPicture loadPicture(const QString &path, const PicturePair &known, imaging::DecoderPool &decoders,
                          const core::CancelFlag &cancel)
{
    if (path.isEmpty() || cancel.isSet())
        return {path};
    for (const LoadedPicture *picture : {&known.first, &known.second})
        if (picture->path == path && !picture->full.isNull())
            return *picture;
    LoadedPicture picture{path};
    const std::optional<quint32> attributes = platform::fileProbe().listedAttributes(path);
    picture.inCloud = attributes && core::isPlaceholder(*attributes);
    if (picture.inCloud)
        return picture;
    if (std::optional<imaging::LoadedImage> loaded = decoders.picture(path, cancel)) {
        picture.full = std::move(loaded->image);
        picture.full.setDevicePixelRatio(1); // "@2x" in a file name must be ignored here
        picture.fitted = picture.full;
        if (std::max(picture.full.width(), picture.full.height()) > fittedSide && !cancel.isSet())
            picture.fitted = picture.full.scaled(
                picture.full.size().scaled(fittedSide, fittedSide, Qt::KeepAspectRatio).expandedTo({1, 1}),
                Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    return picture;
}

} // namespace

PicturePair loadPictures(const QString &first, const QString &second, const PicturePair &known,
                         imaging::DecoderPool &decoders, const core::CancelFlag &cancel)
{
    PicturePair pair;
    pair.first = loadPicture(first, known, decoders, cancel);
    pair.second = loadPicture(second, known, decoders, cancel);
    if (!cancel.isSet())
        pair.difference =
            lookalikes::differenceOf(pair.first.fitted, pair.second.fitted, QSize(fittedSide, fittedSide));
    return pair;
}
