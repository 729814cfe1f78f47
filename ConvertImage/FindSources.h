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
    int others = 0; // given files that do not exist or are only in the cloud
    int unread = 0; // folders that could not be listed
};

// Does disk I/O. Finds the images in what the user added: given files are taken whatever their name; folders
// are searched for files with the extension of a raster image, sorted by name, with or without subfolders.
// Links to folders are not followed.
FoundSources findSources(const QStringList &given, bool withSubfolders, core::DirectoryEnumerator &enumerator,
                         const core::CancelFlag &cancel);

// "*.jpg *.png ...", for a file dialog.
QString pictureFilter();
