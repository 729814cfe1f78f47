// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconDirectory.h"

#include <QByteArrayView>
#include <QImage>
#include <QList>
#include <QString>

// One image of an icon: what its header tells, and the picture itself.
namespace icons
{

bool isPng(QByteArrayView bytes);

// What can be told without decoding.
struct ImageFacts {
    int width = 0; // as the directory says, or, where that says 0, as the image says; 0 when neither tells
    int height = 0;
    int depth = 0; // bits a pixel: those of a decoded PNG are 32 unless decoded() says otherwise
    bool png = false;
    qint64 bytes = 0;

    friend bool operator==(const ImageFacts &, const ImageFacts &) = default;
};

struct IconImage {
    ImageFacts facts;
    QImage image; // null when the bytes are no image that can be decoded
};

ImageFacts imageFacts(QByteArrayView bytes, const DirectoryEntry &entry);

// A PNG by its signature, else a bitmap. The depth is that of the decoded PNG or the directory's one of a
// bitmap, where it has one. No larger than maxSide.
IconImage decodeImage(QByteArrayView bytes, const DirectoryEntry &entry);

// The image that stands for the icon: the first of the largest width. One whose width is unknown ends the
// search and is taken. -1 for an icon without images.
int representative(const QList<ImageFacts> &images);

// "48x48, 32 bits"
QString sizeAndDepth(const ImageFacts &facts);

} // namespace icons
