// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageReport.h"

#include <QCoreApplication>
#include <QStringBuilder>

ImageStatistics statisticsOf(const std::vector<lookalikes::ImageGroup> &groups)
{
    ImageStatistics statistics;
    for (const lookalikes::ImageGroup &group : groups) {
        std::size_t left = 0;
        quint64 bytes = 0;
        for (const lookalikes::ImageRecord &image : group.members) {
            left += image.checked ? 0U : 1U;
            bytes += image.checked ? 0U : image.size;
        }
        if (left < 2)
            continue;
        ++statistics.groups;
        statistics.images += left;
        statistics.freeableBytes += bytes - group.members[*lookalikes::proposedToKeep(group)].size;
    }
    return statistics;
}

QStringList remarks(const ImageReport &report)
{
    QStringList texts;
    if (report.placeholders > 0)
        texts.append(QCoreApplication::translate("ImageReport", "%1 only in the cloud, not compared")
                         .arg(QString::number(report.placeholders)));
    if (report.decodedHere)
        texts.append(QCoreApplication::translate(
            "ImageReport", "LarkspurDecoder.exe did not start, pictures were read without its protection"));
    return texts;
}

QString dimensionsText(const lookalikes::ImageRecord &image)
{
    return QString::number(image.width) % u" \u00d7 " % QString::number(image.height);
}

QString formatText(const lookalikes::ImageRecord &image)
{
    return QString::fromLatin1(image.format).toUpper();
}
