// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace conversion
{

// The file name up to its first dot: "photo" for "C:\\a\\photo.2024.jpg", empty for ".a.jpg".
QString baseName(const QString &path);
// The folder of a file, without a trailing separator.
QString folderOf(const QString &path);

// folder\base.extension. The folder may end in either kind of separator.
QString outputPath(const QString &folder, const QString &source, const QString &extension);

// Compares case-insensitively, as Windows does.
bool isSameFile(const QString &one, const QString &other);

struct PlannedFile {
    QString source;
    QString output;
};

// The output of each source: in `folder`, or beside the source if that is empty. `subfolders` maps a source
// to the subfolder it goes into.
std::vector<PlannedFile> plannedFiles(const QStringList &sources, const QString &folder,
                                      const QString &extension,
                                      const QHash<QString, QString> &subfolders = {});

// Sources that would be written to the same output.
struct Clash {
    QString output;
    std::vector<std::size_t> files; // indexes in the plan, ascending; two or more
};
std::vector<Clash> clashes(const std::vector<PlannedFile> &plan);

// Gives all but the first file of each clash a name that no other file of the plan has and for which
// `isTaken` is false: the complete source name ("photo.2024.png"), or one with a number.
void resolveClashes(std::vector<PlannedFile> &plan, const std::function<bool(const QString &)> &isTaken);

// A free name beside `path`, for an output that is kept in addition to the existing file: "photo (2).png".
QString freeName(const QString &path, const std::function<bool(const QString &)> &isTaken);

} // namespace conversion
