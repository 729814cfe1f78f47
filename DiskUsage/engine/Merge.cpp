// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Merge.h"

#include <utility>

namespace diskusage
{

namespace
{

// The index range of the replaced folders, and the shift of the others. A folder is followed by all of its
// descendants.
struct Replaced {
    int first;
    int end;   // one past the last
    int moved; // shift of the following indexes

    bool holds(int folder) const { return folder >= first && folder < end; }
    int now(int folder) const { return folder < end ? folder : folder + moved; }
};

int endOfSubtree(const ScanResult &result, int folder)
{
    const auto at = [&result](int i) -> const Folder & {
        return result.folders[static_cast<std::size_t>(i)];
    };
    const int count = static_cast<int>(result.folders.size());
    int end = folder + 1;
    while (end < count && at(end).depth > at(folder).depth)
        ++end;
    return end;
}

void addFolders(ScanResult &result, const ScanResult &whole, const ScanResult &now, const Replaced &replaced)
{
    const auto first = static_cast<std::size_t>(replaced.first);
    result.folders.reserve(whole.folders.size() + now.folders.size());
    result.folders.assign(whole.folders.begin(), whole.folders.begin() + replaced.first);
    for (const Folder &folder : now.folders) {
        Folder added = folder;
        added.parent += replaced.first;
        added.depth += whole.folders[first].depth;
        result.folders.push_back(std::move(added));
    }
    Folder &top = result.folders[first];
    top.name = whole.folders[first].name; // keeps the parent's spelling
    top.parent = whole.folders[first].parent;
    top.link = whole.folders[first].link;
    for (auto folder = whole.folders.begin() + replaced.end; folder != whole.folders.end(); ++folder) {
        result.folders.push_back(*folder);
        result.folders.back().parent = replaced.now(folder->parent);
    }
}

void correctTotals(ScanResult &result, const Folder &before, const Folder &after)
{
    for (int i = after.parent; i >= 0; i = result.folders[static_cast<std::size_t>(i)].parent) {
        Folder &above = result.folders[static_cast<std::size_t>(i)];
        above.bytes += after.bytes - before.bytes;
        above.files += after.files - before.files;
        above.folders += after.folders - before.folders;
    }
}

FileTypeResult mergedType(const FileTypeResult &whole, const FileTypeResult &now, const Replaced &replaced,
                          const core::CancelFlag &cancel)
{
    FileTypeResult type{whole.category, {}, 0};
    type.files.reserve(whole.files.size() + now.files.size());
    const auto addNew = [&] {
        for (const FileRecord &file : now.files) {
            type.files.push_back(file);
            type.files.back().folder += replaced.first;
            type.total += file.size;
        }
    };
    bool added = false;
    for (const FileRecord &file : whole.files) {
        if (cancel.isSet())
            return type;
        if (replaced.holds(file.folder)) {
            if (!std::exchange(added, true))
                addNew();
            continue;
        }
        type.files.push_back(file);
        type.files.back().folder = replaced.now(file.folder);
        type.total += file.size;
    }
    if (!added)
        addNew();
    type.files.shrink_to_fit();
    return type;
}

} // namespace

int findFolder(const ScanResult &result, const QString &path)
{
    const QString top = result.folders.empty() ? QString() : result.path(0);
    if (top.isEmpty() || !path.startsWith(top))
        return -1;
    const QStringList names = path.sliced(top.size()).split(QLatin1Char('\\'), Qt::SkipEmptyParts);
    int found = 0;
    qsizetype level = 0;
    // A single pass: descendants follow their folder.
    for (std::size_t i = 1; i < result.folders.size() && level < names.size(); ++i) {
        const Folder &folder = result.folders[i];
        if (folder.parent == found && folder.name == names.at(level)) {
            found = static_cast<int>(i);
            ++level;
        }
    }
    return level == names.size() ? found : -1;
}

std::shared_ptr<ScanResult> merged(const ScanResult &whole, int folder, const ScanResult &now,
                                   const core::CancelFlag &cancel)
{
    const Replaced replaced{folder, endOfSubtree(whole, folder),
                            static_cast<int>(now.folders.size()) - (endOfSubtree(whole, folder) - folder)};
    auto result = std::make_shared<ScanResult>();
    result->root = whole.root;
    result->biggestFiles = whole.biggestFiles;
    addFolders(*result, whole, now, replaced);
    correctTotals(*result, whole.folders[static_cast<std::size_t>(folder)],
                  result->folders[static_cast<std::size_t>(folder)]);
    for (std::size_t i = 0; i < whole.fileTypes.size() && i < now.fileTypes.size(); ++i)
        result->fileTypes.push_back(mergedType(whole.fileTypes[i], now.fileTypes[i], replaced, cancel));
    result->others = mergedType(whole.others, now.others, replaced, cancel);
    return cancel.isSet() ? nullptr : result;
}

} // namespace diskusage
