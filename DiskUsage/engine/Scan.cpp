// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Scan.h"

#include "DiskUsage/engine/Exclusions.h"
#include "core/FolderWalk.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace diskusage
{

namespace
{

// The children lists store signed sizes.
qint64 signedSize(quint64 bytes)
{
    return static_cast<qint64>(qMin(bytes, quint64{std::numeric_limits<qint64>::max()}));
}

// "C:" would be the current folder of the drive, not its root.
QString shownPath(const QString &path)
{
    return path.isEmpty() || path.endsWith(QLatin1Char(':')) ? path + QLatin1Char('\\') : path;
}

class BiggestFiles
{
public:
    bool takes(quint64 size) const { return size > m_threshold; }

    void insert(BiggestFile file)
    {
        const auto smaller = std::find_if(m_files.begin(), m_files.end(), [&file](const BiggestFile &other) {
            return other.size < file.size;
        });
        m_files.insert(smaller, std::move(file));
        if (m_files.size() > most)
            m_files.pop_back();
        if (m_files.size() == most)
            m_threshold = m_files.back().size;
    }

    std::vector<BiggestFile> take() { return std::move(m_files); }

private:
    static constexpr std::size_t most = 20;
    std::vector<BiggestFile> m_files;
    quint64 m_threshold = 0; // files up to this size are ignored; empty files always are
};

// Builds the result during the walk.
class ScanVisitor : public core::WalkVisitor
{
public:
    ScanVisitor(const ScanOptions &options, const Exclusions &exclusions, ScanListener &listener,
                ScanResult &result)
        : m_collect(options.collectFileTypes),
          m_matcher(options.fileTypes),
          m_exclusions(exclusions),
          m_listener(listener),
          m_result(result)
    {
    }

    void finish();

    void rootCounted(int directSubfolders) override { m_listener.totalSubFolders(directSubfolders + 1); }
    void entryMet() override { m_listener.itemSeen(++m_result.itemsSeen); }
    bool acceptFolder(const QString &path, const core::DirectoryEntry &entry) override;
    void enterFolder(const QString &path, QStringView name, int depth, FolderState state) override;
    void file(const QString &folder, const core::DirectoryEntry &entry) override;
    void leaveFolder() override;

private:
    Folder &folderAt(int index) { return m_result.folders[static_cast<std::size_t>(index)]; }
    LargestChildren &largest() { return m_largest[static_cast<std::size_t>(m_depth)]; }
    void collect(const QString &name, const core::DirectoryEntry &entry);
    void addRecord(FileTypeResult &type, const QString &name, const core::DirectoryEntry &entry, int index);

    const bool m_collect;
    const core::FileTypeMatcher m_matcher;
    const Exclusions &m_exclusions;
    ScanListener &m_listener;
    ScanResult &m_result;

    BiggestFiles m_biggest;
    int m_current = -1; // the walk's current folder
    int m_depth = -1;
    bool m_link = false; // of the folder accepted last
    int m_completed = 0;
    int m_records = 0;                      // files that belong to a category
    std::vector<LargestChildren> m_largest; // for the current folder and its ancestors, by depth
};

bool ScanVisitor::acceptFolder(const QString &path, const core::DirectoryEntry &entry)
{
    m_link = entry.mayBeLink();
    if (!m_exclusions.isExcludedLogged(path))
        return true;
    m_result.excluded.append(path);
    return false;
}

void ScanVisitor::enterFolder(const QString &path, QStringView name, int depth, FolderState state)
{
    if (depth == 1)
        m_listener.folderEntered(path);
    if (m_current >= 0)
        ++folderAt(m_current).folders;

    Folder folder;
    folder.name =
        depth > 0 ? name.toString() : shownPath(path.sliced(path.lastIndexOf(QLatin1Char('\\')) + 1));
    folder.parent = m_current;
    folder.depth = depth;
    folder.inOneDrive = m_exclusions.isInOneDrive(path);
    folder.readable = state != FolderState::Unreadable;
    folder.link = depth > 0 && m_link;
    folder.cycle = state == FolderState::Cycle;
    if (!folder.readable)
        m_result.unreadable.append(shownPath(path));
    else if (state == FolderState::ListedInPart)
        m_result.readInPart.append(shownPath(path));
    m_result.folders.push_back(std::move(folder));

    m_current = static_cast<int>(m_result.folders.size()) - 1;
    m_depth = depth;
    if (m_largest.size() == static_cast<std::size_t>(depth))
        m_largest.emplace_back();
    largest().clear();
}

void ScanVisitor::file(const QString &folder, const core::DirectoryEntry &entry)
{
    Folder &current = folderAt(m_current);
    ++current.files;
    current.bytes += entry.size;

    const QString name = entry.name.toString();
    largest().offer(name, signedSize(entry.size), LargestChildren::File);
    if (m_biggest.takes(entry.size))
        m_biggest.insert({name, shownPath(folder), entry.size, entry.lastAccessTime});
    if (m_collect)
        collect(name, entry);
}

void ScanVisitor::leaveFolder()
{
    Folder &done = folderAt(m_current);
    done.index = m_completed++;
    done.maxData = largest().serialised();
    m_current = done.parent;
    --m_depth;
    if (m_current < 0)
        return;
    Folder &parent = folderAt(m_current);
    parent.bytes += done.bytes;
    parent.files += done.files;
    parent.folders += done.folders;
    largest().offer(done.name, signedSize(done.bytes), LargestChildren::SubFolder);
}

void ScanVisitor::collect(const QString &name, const core::DirectoryEntry &entry)
{
    const std::vector<int> &categories = m_matcher.match(name);
    for (const int category : categories)
        addRecord(m_result.fileTypes[static_cast<std::size_t>(category)], name, entry, m_records++);
    if (categories.empty())
        addRecord(m_result.others, name, entry, static_cast<int>(m_result.others.files.size()));
}

void ScanVisitor::addRecord(FileTypeResult &type, const QString &name, const core::DirectoryEntry &entry,
                            int index)
{
    type.files.push_back({name, m_current, index, entry.size, entry.lastAccessTime});
    type.total += entry.size;
}

// The result is kept as long as the user looks at it, so the lists' spare capacity is released.
void ScanVisitor::finish()
{
    m_result.biggestFiles = m_biggest.take();
    m_result.folders.shrink_to_fit();
    for (FileTypeResult &type : m_result.fileTypes)
        type.files.shrink_to_fit();
    m_result.others.files.shrink_to_fit();
}

} // namespace

void ScanResult::dropFiles()
{
    for (FileTypeResult &type : fileTypes)
        type.files = {};
    others.files = {};
}

QString ScanResult::path(int folder) const
{
    std::vector<int> chain; // from the folder up to the root's child
    qsizetype length = root.size();
    for (int i = folder; folders[static_cast<std::size_t>(i)].parent >= 0;
         i = folders[static_cast<std::size_t>(i)].parent) {
        chain.push_back(i);
        length += folders[static_cast<std::size_t>(i)].name.size() + 1;
    }
    if (chain.empty())
        return shownPath(root);
    QString path;
    path.reserve(length);
    path += root;
    for (auto i = chain.rbegin(); i != chain.rend(); ++i) {
        path += QLatin1Char('\\');
        path += folders[static_cast<std::size_t>(*i)].name;
    }
    return path;
}

ScanResult scanFolder(const QString &root, const ScanOptions &options, core::DirectoryEnumerator &enumerator,
                      ScanListener &listener, const core::CancelFlag &cancel)
{
    ScanResult result;
    result.root = core::walkRoot(root);
    for (const core::FileTypeCategory &category : options.fileTypes)
        result.fileTypes.push_back({category, {}, 0});
    result.others.category.name = QLatin1String(core::otherFileTypes);
    if (!cancel.isSet()) {
        const Exclusions exclusions(options);
        core::WalkOptions walk;
        walk.readAheadThreads = options.readAheadThreads;
        walk.ancestors = options.ancestors;
        if (!exclusions.isEmpty())
            walk.mayListAhead = [&exclusions](const QString &path) { return !exclusions.isExcluded(path); };
        ScanVisitor visitor(options, exclusions, listener, result);
        core::walkFolders(root, enumerator, visitor, cancel, walk);
        visitor.finish();
    }
    result.cancelled = cancel.isSet();
    return result;
}

} // namespace diskusage
