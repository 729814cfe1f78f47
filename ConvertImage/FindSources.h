// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/SourceModel.h"

#include <QStringList>

#include <functional>
#include <memory>

namespace core
{
class DirectoryEnumerator;
}

struct FoundSources {
    std::vector<SourceFile> files;
    int others = 0; // given files that are gone, or only in a cloud store
    int unread = 0; // folders that could not be listed
};

// Disk. The pictures among what the user gave: files as they are, whatever their name, and of folders the
// files that are called like raster images, sorted by name, with or without those of subfolders. Links to
// folders are not entered.
FoundSources findSources(const QStringList &given, bool withSubfolders, core::DirectoryEnumerator &enumerator,
                         const core::CancelFlag &cancel);

// "*.jpg *.png ...", for a file dialog.
QString pictureFilter();
