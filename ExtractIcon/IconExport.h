// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconListing.h"
#include "core/CancelFlag.h"

#include <QString>
#include <QStringList>

#include <functional>

// Writes icons to disk. Any thread; reads the source file again, since it may have changed.
namespace icons
{

struct ExportTask {
    QString source;     // the file that contains the icons
    QList<quint32> ids; // the icons to export
    QString folder;     // target folder for PNG files, or for several icon files
    QString name;       // start of the file names; with several icons the number is appended
    // PNG: selects images of an icon, by their facts and their index in the directory.
    std::function<bool(const ImageFacts &facts, qsizetype index)> isWanted = {};
    QString file = {}; // for a single icon: the icon file to write; folder and name are then ignored
};

struct ExportResult {
    int written = 0;      // number of files
    QStringList failures; // "name: reason", for the user
    QString firstWritten; // selected in Explorer
};

// Writes the wanted images as "name_48x48_32bits.png". An image that cannot be decoded or written does not
// stop the others.
ExportResult exportPng(const ExportTask &task, const core::CancelFlag &cancel);

// Writes each icon with all sizes, with the images as they are stored.
ExportResult exportIco(const ExportTask &task, const core::CancelFlag &cancel);

} // namespace icons
