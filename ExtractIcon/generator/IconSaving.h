// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/FunctionJob.h"

#include <QImage>
#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>

namespace imaging
{
class DecoderPool;
}

// Makes icon files from images. Any thread.
namespace icons
{

struct SourcePicture {
    QString path;
    QRect square; // in image pixels; empty for the largest one in the centre
};

struct SaveTask {
    QList<SourcePicture> pictures;
    QString file;   // for a single image: the icon file to write
    QString folder; // otherwise NAME.ico in this folder; nothing is replaced, taken names get a number
    QList<int> sizes;
    bool sharpen = true;
};

struct SaveResult {
    QStringList files;    // written, in the order of the images
    QStringList failures; // "name: reason", for the user
};

// The images of an icon, one per size. Empty if the image is null or the work was cancelled.
QList<QImage> makeImages(const QImage &picture, const QRect &square, const QList<int> &sizes, bool sharpen,
                         const core::CancelFlag &cancel);

// Decodes and saves one image after the other; one that fails does not stop the others. Progress counts
// images.
SaveResult saveIcons(const SaveTask &task, imaging::DecoderPool &decoders, const core::JobControl &job);

} // namespace icons
