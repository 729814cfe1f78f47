// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace conversion
{

// The name of a file before its first dot: "photo" of "C:\\a\\photo.2024.jpg", and nothing of ".a.jpg".
QString baseName(const QString &path);
// The folder that a file lies in, without a separator at its end.
QString folderOf(const QString &path);

// folder\base.extension. Both kinds of separators may end the folder.
QString outputPath(const QString &folder, const QString &source, const QString &extension);

// Windows compares names without regard to case.
bool isSameFile(const QString &one, const QString &other);

struct PlannedFile {
    QString source;
    QString output;
};

// Where each source goes: into `folder`, or beside itself when that is empty. Those of `subfolders`, by
// source, go into that folder below it.
std::vector<PlannedFile> plannedFiles(const QStringList &sources, const QString &folder,
                                      const QString &extension,
                                      const QHash<QString, QString> &subfolders = {});

// Sources that would be written to one output.
struct Clash {
    QString output;
    std::vector<std::size_t> files; // indexes in the plan, in its order; two or more
};
std::vector<Clash> clashes(const std::vector<PlannedFile> &plan);

// Gives all but the first of each clash a name of its own, which no other file of the plan has and for which
// `isTaken` is false: with all of the source's name ("photo.2024.png"), or else with a number.
void resolveClashes(std::vector<PlannedFile> &plan, const std::function<bool(const QString &)> &isTaken);

// A free name beside `path`, for an output that is to be kept together with the file that is there:
// "photo (2).png".
QString freeName(const QString &path, const std::function<bool(const QString &)> &isTaken);

} // namespace conversion
