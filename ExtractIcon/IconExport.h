// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconListing.h"
#include "core/CancelFlag.h"

#include <QString>
#include <QStringList>

#include <functional>

// Writing icons to disk. Any thread; reads the file with the icons once more, since it may have changed.
namespace icons
{

struct ExportTask {
    QString source;     // the file with the icons
    QList<quint32> ids; // the icons
    QString folder;     // into which PNG files, or several icon files, go
    QString name;       // the first part of their names; with several icons the number follows
    // PNG: which images of an icon. Gets its facts and its place in the directory.
    std::function<bool(const ImageFacts &facts, qsizetype index)> isWanted = {};
    QString file = {}; // of one icon: the icon file to write, whatever folder and name say
};

struct ExportResult {
    int written = 0;      // files
    QStringList failures; // "name: why", in words for the user
    QString firstWritten; // to show in Explorer
};

// The wanted images, each as "name_48x48_32bits.png". An image that cannot be decoded or written does not
// keep the others from being written.
ExportResult exportPng(const ExportTask &task, const core::CancelFlag &cancel);

// Each icon with all its sizes, the images as they are stored.
ExportResult exportIco(const ExportTask &task, const core::CancelFlag &cancel);

} // namespace icons
