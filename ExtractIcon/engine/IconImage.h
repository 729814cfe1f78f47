// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconDirectory.h"

#include <QByteArrayView>
#include <QImage>
#include <QList>
#include <QString>

// One image of an icon: the facts from its header, and the pixels.
namespace icons
{

bool isPng(QByteArrayView bytes);

// What is known without decoding.
struct ImageFacts {
    int width = 0; // from the directory, or from the image if that is 0; 0 if neither has it
    int height = 0;
    int depth = 0; // bits per pixel: 32 for PNG, unless decoded() finds another depth
    bool png = false;
    qint64 bytes = 0;

    friend bool operator==(const ImageFacts &, const ImageFacts &) = default;
};

struct IconImage {
    ImageFacts facts;
    QImage image; // null if it cannot be decoded
};

ImageFacts imageFacts(QByteArrayView bytes, const DirectoryEntry &entry);

// PNG by its signature, otherwise a bitmap. The depth is that of the decoded PNG, or the directory's for a
// bitmap if it has one. Limited to maxSide.
IconImage decodeImage(QByteArrayView bytes, const DirectoryEntry &entry);

// The image that represents the icon: the first of the largest width. An image of unknown width ends the
// search and is taken. -1 for an icon without images.
int representative(const QList<ImageFacts> &images);

// "48x48, 32 bits"
QString sizeAndDepth(const ImageFacts &facts);

} // namespace icons
