// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ExtractIcon/engine/IconImage.h"

#include <QList>
#include <QString>
#include <QStringList>

// Names of exported files.
namespace icons
{

// One name per image: "name_48x48_32bits.png", with the width twice. Repeated names get " (2)", " (3)" before
// the dot, so that images of equal width and depth do not overwrite each other.
QStringList pngNames(const QString &name, const QList<ImageFacts> &images);

// "shell32_16.ico"; just the file name for an icon without a number.
QString iconName(const QString &name, quint32 id);

// Whether `name` can be part of a Windows file name: no folder, device or stream.
bool isUsableName(const QString &name);

} // namespace icons
