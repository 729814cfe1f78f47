// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicateImage/ImageReport.h"

#include "core/CountText.h"

#include <QCoreApplication>
#include <QStringBuilder>

#include <algorithm>

ImageStatistics statisticsOf(const std::vector<lookalikes::ImageGroup> &groups)
{
    ImageStatistics statistics;
    for (const lookalikes::ImageGroup &group : groups) {
        const auto left = static_cast<std::size_t>(
            std::count_if(group.members.cbegin(), group.members.cend(),
                          [](const lookalikes::ImageRecord &image) { return !image.checked; }));
        if (left < 2)
            continue;
        ++statistics.groups;
        statistics.images += left;
        statistics.freeableBytes += lookalikes::freeableBytes(group);
    }
    return statistics;
}

QStringList remarks(const ImageReport &report)
{
    QStringList texts;
    if (report.placeholders > 0)
        texts.append(QCoreApplication::translate("ImageReport", "%1 only in the cloud, not compared")
                         .arg(QString::number(report.placeholders)));
    if (report.imagesLost > 0)
        texts.append(core::countText(
            report.imagesLost,
            QCoreApplication::translate("ImageReport", "1 picture broke its decoder and was not compared"),
            QCoreApplication::translate("ImageReport",
                                        "%1 pictures broke their decoder and were not compared")));
    if (report.foldersUnread > 0)
        texts.append(core::countText(
            report.foldersUnread, QCoreApplication::translate("ImageReport", "1 folder could not be read"),
            QCoreApplication::translate("ImageReport", "%1 folders could not be read")));
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
