// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"
#include "core/FileTypes.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

// The folder scan: sizes and counts of all folders, the largest children of each, the twenty biggest files,
// and the files of each file-type category. Portable; the module's threads run it and build item models from
// the result.
namespace diskusage
{

// Shown in a root's size column until its total is known.
inline constexpr char pendingSizeText[] = "Column 2 Text";

struct ScanOptions {
    core::FileTypeTable fileTypes;
    std::vector<core::ExcludedFolder> excludedFolders;
    bool excludeOneDrive = false;
    QString oneDriveFolder; // empty when there is none
    int readAheadThreads = 0;
    // For a rescan of a folder: its ancestors in the larger scan, innermost first. Links to one of them are
    // not followed, as in that scan.
    QStringList ancestors;
    // False leaves the category lists empty.
    bool collectFileTypes = true;
};

// One folder. Folders are stored in walk order, parents before children; `parent` is an index into
// ScanResult::folders, -1 for the root.
struct Folder {
    QString name; // for the root: its file name, or its whole path if that is empty (a drive root)
    int parent = -1;
    int depth = 0;
    quint64 bytes = 0;
    int files = 0;   // on all levels
    int folders = 0; // on all levels, excluding itself
    int index = -1;  // number in order of completion (children before parents); -1 if incomplete
    bool inOneDrive = false;
    bool readable = true;
    bool link = false;  // its target may also be counted elsewhere
    bool cycle = false; // a link to one of its own ancestors, not followed
    QString maxData;    // "a.iso:700:0;Photos:50:1;", see LargestChildren
};

struct BiggestFile {
    QString name;
    QString folder; // without the name
    quint64 size = 0;
    quint64 lastAccessTime = 0; // FILETIME
};

// A file of a category. Its folder is stored as an index, and path and texts are built on display: a drive
// has millions of these.
struct FileRecord {
    QString name;
    int folder = -1; // index into ScanResult::folders
    // Sequence number over all categories of a scan; files of no category have a separate sequence.
    int index = 0;
    quint64 size = 0;
    quint64 lastAccessTime = 0; // FILETIME
};

struct FileTypeResult {
    core::FileTypeCategory category;
    std::vector<FileRecord> files;
    quint64 total = 0;
};

struct ScanResult {
    QString root;                          // in the form of core::walkRoot()
    std::vector<Folder> folders;           // empty if the scan was cancelled before it began
    std::vector<BiggestFile> biggestFiles; // at most 20, largest first
    std::vector<FileTypeResult> fileTypes; // one per category of the options, in their order
    FileTypeResult others;                 // files of no enabled category; category.name = otherFileTypes
    QStringList excluded;                  // full paths of the excluded folders
    QStringList unreadable;                // full paths of folders that could not be listed
    QStringList
        readInPart; // full paths of folders whose listing was interrupted; the entries until then are counted
    int itemsSeen = 0;
    bool cancelled = false;

    // Frees the files of all categories, but keeps the categories. May take long.
    void dropFiles();
    // Full path with native separators; "C:\" for a drive root.
    QString path(int folder) const;
};

// Progress of a running scan, called on the scanning thread for every single event.
class ScanListener
{
public:
    virtual ~ScanListener() = default;
    virtual void totalSubFolders(int total) = 0; // once: direct subfolders of the root + 1
    virtual void
    folderEntered(const QString &path) = 0; // each direct subfolder of the root that is not excluded
    virtual void itemSeen(int itemsSeen) = 0;
};

// Scans until the end or until cancelled; then all folders that were begun are complete with partial totals.
// If it is cancelled before it begins, the listener is not called.
ScanResult scanFolder(const QString &root, const ScanOptions &options, core::DirectoryEnumerator &enumerator,
                      ScanListener &listener, const core::CancelFlag &cancel);

// The ten largest children of a folder, largest first; for equal sizes the one added first comes first.
class LargestChildren
{
public:
    enum Kind { File = 0, SubFolder = 1 };
    struct Child {
        QString name;
        qint64 size = 0;
        Kind kind = File;
        bool operator==(const Child &) const = default;
    };

    void offer(const QString &name, qint64 size, Kind kind);
    void clear() { m_children.clear(); }
    const std::vector<Child> &children() const { return m_children; }

    // "name:size:kind;" for each. Names may contain ";" but never ":".
    QString serialised() const;
    // Parses that form; stops at the first invalid part.
    static std::vector<Child> parse(QStringView serialised);

private:
    std::vector<Child> m_children;
};

} // namespace diskusage
