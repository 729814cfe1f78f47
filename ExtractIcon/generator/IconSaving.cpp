// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/generator/IconSaving.h"

#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/engine/CropSquare.h"
#include "ExtractIcon/engine/IconPicture.h"
#include "ExtractIcon/engine/IconWriter.h"
#include "imaging/DecoderPool.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace icons
{

namespace
{

QString freeTarget(const QString &folder, const QString &name)
{
    QString target = folder + QLatin1Char('\\') + name + QStringLiteral(".ico");
    for (int again = 2; QFileInfo::exists(target); ++again)
        target = folder + QLatin1Char('\\') + name + QStringLiteral(" (%1).ico").arg(again);
    return target;
}

} // namespace

QList<QImage> makeImages(const QImage &picture, const QRect &square, const QList<int> &sizes, bool sharpen,
                         const core::CancelFlag &cancel)
{
    QList<QImage> images;
    const IconPicture prepared(picture, square);
    for (const int side : sizes) {
        if (cancel.isSet() || !prepared.isValid())
            return {};
        images.append(prepared.made(side, sharpen));
    }
    return images;
}

SaveResult saveIcons(const SaveTask &task, imaging::DecoderPool &decoders, const core::JobControl &job)
{
    SaveResult result;
    job.progress.setTotalSteps(static_cast<int>(task.pictures.size()));
    for (qsizetype i = 0; i < task.pictures.size(); ++i) {
        const SourcePicture &picture = task.pictures[i];
        job.progress.setPath(picture.path);
        job.progress.setSteps(static_cast<int>(i));
        const auto loaded = decoders.picture(picture.path, job.cancel);
        const QImage image = loaded ? loaded->image : QImage();
        const QRect square = picture.square.isEmpty() ? largestSquare(image.size()) : picture.square;
        const QByteArray file = makeIconFile(makeImages(image, square, task.sizes, task.sharpen, job.cancel));
        if (job.cancel.isSet())
            break;
        const QString target = !task.file.isEmpty()
                                   ? task.file
                                   : freeTarget(task.folder, QFileInfo(picture.path).completeBaseName());
        const QString error = file.isEmpty()
                                  ? QCoreApplication::translate("ExtractIcon", "the picture cannot be read")
                                  : writeFile(target, file);
        if (error.isEmpty())
            result.files.append(target);
        else
            result.failures.append(QStringLiteral("%1: %2").arg(QFileInfo(target).fileName(), error));
    }
    return result;
}

} // namespace icons
