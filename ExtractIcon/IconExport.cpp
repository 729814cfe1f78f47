// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/IconExport.h"

#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/engine/ExportNames.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

namespace icons
{

namespace
{

QString tr(const char *text)
{
    return QCoreApplication::translate("ExtractIcon", text);
}

QByteArray encoded(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "PNG");
    writer.setOptimizedWrite(true);
    writer.setProgressiveScanWrite(true);
    return buffer.open(QIODevice::WriteOnly) && writer.write(image) ? bytes : QByteArray();
}

void write(const QString &path, const QByteArray &bytes, ExportResult &result)
{
    const QString error = writeFile(path, bytes);
    if (error.isEmpty()) {
        if (result.written++ == 0)
            result.firstWritten = QDir::toNativeSeparators(path);
        return;
    }
    qDebug() << "Cannot overwrite: " << path;
    result.failures.append(QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), error));
}

QString path(const QString &folder, const QString &name)
{
    return folder + QLatin1Char('\\') + name;
}

void exportImages(const StoredIcon &icon, const ExportTask &task, const QString &name, ExportResult &result)
{
    const QList<IconImage> images = decodeIcon(icon);
    QList<ImageFacts> wanted;
    QList<QImage> pictures;
    for (qsizetype i = 0; i < images.size(); ++i) {
        if (task.isWanted && !task.isWanted(images[i].facts, i))
            continue;
        wanted.append(images[i].facts);
        pictures.append(images[i].image);
    }
    const QStringList names = pngNames(name, wanted);
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        if (pictures[i].isNull())
            result.failures.append(tr("%1: the image is damaged").arg(names[i]));
        else
            write(path(task.folder, names[i]), encoded(pictures[i]), result);
    }
}

// Calls `found` for each icon of the task that can still be read.
template <class Found>
ExportResult eachIcon(const ExportTask &task, const core::CancelFlag &cancel, Found found)
{
    ExportResult result;
    const std::unique_ptr<IconSource> source = openIcons(task.source);
    for (const quint32 id : task.ids) {
        if (cancel.isSet())
            break;
        if (const std::optional<StoredIcon> icon = readIcon(*source, id))
            found(*icon, id, result);
        else
            result.failures.append(tr("Icon %1 cannot be read any more").arg(id));
    }
    return result;
}

} // namespace

ExportResult exportPng(const ExportTask &task, const core::CancelFlag &cancel)
{
    const bool several = task.ids.size() > 1;
    return eachIcon(task, cancel, [&](const StoredIcon &icon, quint32 id, ExportResult &result) {
        exportImages(icon, task, several ? task.name + QStringLiteral("_%1").arg(id) : task.name, result);
    });
}

ExportResult exportIco(const ExportTask &task, const core::CancelFlag &cancel)
{
    return eachIcon(task, cancel, [&](const StoredIcon &icon, quint32 id, ExportResult &result) {
        const QString file = task.file.isEmpty() ? path(task.folder, iconName(task.name, id)) : task.file;
        write(file, iconFile(icon.directory, icon.bytes), result);
    });
}

} // namespace icons
