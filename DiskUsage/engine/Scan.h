// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"
#include "core/DirectoryEnumerator.h"
#include "core/FileTypes.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

// The folder scan: sizes and counts of every folder, the largest children of each, the twenty biggest files,
// and the files of every file-type category. Portable; the threads of the module run it and build item models
// from the result.
namespace diskusage
{

// What stands in a root's size column until its total is known.
inline constexpr char pendingSizeText[] = "Column 2 Text";

struct ScanOptions {
    core::FileTypeTable fileTypes;
    std::vector<core::ExcludedFolder> excludedFolders;
    bool excludeOneDrive = false;
    QString oneDriveFolder; // empty when there is none
    int readAheadThreads = 0;
    // Of the scan of one folder out of a larger scan: the folders above it in that one, innermost first. A
    // link to one of them is not entered, as it was not then.
    QStringList ancestors;
    // False keeps the scan from adding to the category lists.
    bool collectFileTypes = true;
};

// One folder. Folders are stored in the order in which they were met, parents before children; `parent` is an
// index into ScanResult::folders, -1 for the root.
struct Folder {
    QString name; // the root: its file name, or its whole path where that is empty (a drive root)
    int parent = -1;
    int depth = 0;
    quint64 bytes = 0;
    int files = 0;   // of all levels
    int folders = 0; // of all levels, itself not counted
    int index = -1;  // the running number given at completion (children before parents); -1 = not complete
    bool inOneDrive = false;
    bool readable = true;
    bool link = false;  // what it leads to may be counted in another place as well
    bool cycle = false; // a link to one of its own ancestors, not entered
    QString maxData;    // "a.iso:700:0;Photos:50:1;", see LargestChildren
};

struct BiggestFile {
    QString name;
    QString folder; // without the name
    quint64 size = 0;
    quint64 lastAccessTime = 0; // FILETIME
};

// A file of a category. Its folder is kept as an index, its path and texts are built when they are shown: a
// drive has millions of these.
struct FileRecord {
    QString name;
    int folder = -1; // index into ScanResult::folders
    // Running number of the records of a scan, all categories together; the files of no category have numbers
    // of their own.
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
    std::vector<Folder> folders;           // empty when the scan was cancelled before it began
    std::vector<BiggestFile> biggestFiles; // at most 20, largest first
    std::vector<FileTypeResult> fileTypes; // one per category of the options, in their order
    FileTypeResult others;  // files that no enabled category took; category.name = otherFileTypes
    QStringList excluded;   // full paths of the folders that an exclusion left out
    QStringList unreadable; // full paths of folders that could not be listed
    QStringList readInPart; // full paths of folders whose listing broke off; what came until then is counted
    int itemsSeen = 0;
    bool cancelled = false;

    // Forgets the files of all categories, not the categories. Frees them: may take long.
    void dropFiles();
    // Full path with native separators; of a drive root "C:\".
    QString path(int folder) const;
};

// Progress of a running scan, called on the scanning thread: once per event, without any thinning out.
class ScanListener
{
public:
    virtual ~ScanListener() = default;
    virtual void totalSubFolders(int total) = 0; // once: direct subfolders of the root + 1
    virtual void
    folderEntered(const QString &path) = 0; // each direct subfolder of the root that is not left out
    virtual void itemSeen(int itemsSeen) = 0;
};

// Scans until the end or until cancelled; then every folder that was begun is complete with its partial
// totals. Of a scan that was cancelled before it began the listener hears nothing.
ScanResult scanFolder(const QString &root, const ScanOptions &options, core::DirectoryEnumerator &enumerator,
                      ScanListener &listener, const core::CancelFlag &cancel);

// The (up to ten) largest children of a folder, largest first; among equals the one offered first stays
// first.
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

    // "name:size:kind;" for each. Names may hold ";" but never ":".
    QString serialised() const;
    // Reads that form back; stops at the first thing that is not of it.
    static std::vector<Child> parse(QStringView serialised);

private:
    std::vector<Child> m_children;
};

} // namespace diskusage
