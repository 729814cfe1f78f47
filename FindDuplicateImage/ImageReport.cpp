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

QString placeholderText(std::size_t placeholders)
{
    if (placeholders == 0)
        return {};
    return QCoreApplication::translate("ImageReport", "%1 only in the cloud, not compared")
        .arg(QString::number(placeholders));
}

QString dimensionsText(const lookalikes::ImageRecord &image)
{
    return QString::number(image.width) % u" \u00d7 " % QString::number(image.height);
}

QString formatText(const lookalikes::ImageRecord &image)
{
    return QString::fromLatin1(image.format).toUpper();
}
