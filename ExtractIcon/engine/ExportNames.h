// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"

#include <QList>
#include <QString>
#include <QStringList>

// The names of exported files.
namespace icons
{

// One name for each image: "name_48x48_32bits.png", with the width twice. A name that has been given out
// already is followed by " (2)", " (3)" before the dot: images of equal width and depth do not overwrite
// each other.
QStringList pngNames(const QString &name, const QList<ImageFacts> &images);

// "shell32_16.ico"; the file's own name for an icon that has no number.
QString iconName(const QString &name, quint32 id);

// Whether `name` can be a part of a file name on Windows: it names no folder, no device and no stream.
bool isUsableName(const QString &name);

} // namespace icons
