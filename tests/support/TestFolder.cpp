// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/TestFolder.h"

#include "core/CancelFlag.h"
#include "platform/Handle.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/Win32Enumerator.h"
#include "tests/support/TestPrefix.h"

#include <QDir>
#include <QElapsedTimer>
#include <QStringBuilder>
#include <QUuid>

#include <string>

namespace tests
{

namespace
{

using platform::apiPath;
using UnixName = char *(CDECL *)(const wchar_t *);

UnixName unixNameFunction()
{
    const HMODULE kernel = GetModuleHandleW(L"kernel32");
    return reinterpret_cast<UnixName>(
        reinterpret_cast<void *>(GetProcAddress(kernel, "wine_get_unix_file_name")));
}

// The name that a path of this prefix has on the build machine.
QString unixName(const QString &path)
{
    char *name = unixNameFunction()(platform::wide(path));
    const QString result = QString::fromUtf8(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

void runUnix(const QString &program, const QStringList &arguments)
{
    std::wstring command = QString(program % u" \"" % arguments.join(u"\" \"") % u'"').toStdWString();
    const std::wstring file = QString(u"\\\\?\\unix" % QString(program).replace(u'/', u'\\')).toStdWString();
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(file.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        qFatal("Cannot run %ls", qUtf16Printable(program));
    const platform::ObjectHandle handles[] = {platform::ObjectHandle(process.hProcess),
                                              platform::ObjectHandle(process.hThread)};
}

// A program of the build machine cannot be waited for.
template <class Condition>
void waitUntil(const Condition &condition, const QString &what)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 10'000)
            qFatal("Waited in vain for %ls", qUtf16Printable(what));
        Sleep(5);
    }
}

void require(bool done, const char *what, const QString &path)
{
    if (!done)
        qFatal("%s failed with %lu: %ls", what, GetLastError(), qUtf16Printable(path));
}

// Makes the folders above `full` that are missing. Looks from below, since what is missing is mostly little.
void makeParents(const QString &full)
{
    QStringList missing;
    for (QString folder = full.left(full.lastIndexOf(u'\\')); !platform::fileExists(folder);
         folder.truncate(folder.lastIndexOf(u'\\')))
        missing.prepend(folder);
    for (const QString &folder : std::as_const(missing))
        require(CreateDirectoryW(apiPath(folder).c_str(), nullptr), "CreateDirectoryW", folder);
}

platform::FileHandle createFile(const QString &full)
{
    makeParents(full);
    platform::FileHandle file(CreateFileW(apiPath(full).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
    require(bool(file), "CreateFileW", full);
    return file;
}

FILETIME fileTime(quint64 time)
{
    return {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
}

// A program that a test has started may still be ending in the folder, and virus scanners look at new files.
template <class Call>
void requireSoon(const Call &call, const char *what, const QString &path)
{
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (call())
            return;
        if (GetLastError() != ERROR_SHARING_VIOLATION)
            break;
        Sleep(10);
    }
    require(false, what, path);
}

// The links are gone by now, so nothing that is met leads out. Depth first without recursion, as a test may
// nest thousands of folders.
void removeTree(const QString &root)
{
    platform::Win32Enumerator enumerator;
    const core::CancelFlag never;
    QStringList folders{root};
    while (!folders.isEmpty()) {
        const QString folder = folders.last();
        const qsizetype before = folders.size();
        core::DirectoryListing listing;
        enumerator.list(folder, listing, never);
        for (std::size_t index = 0; index < listing.size(); ++index) {
            const core::DirectoryEntry entry = listing.at(index);
            const QString item = folder % u'\\' % entry.name;
            require(!entry.mayBeLink(), "An unknown link stands in the way of removing", item);
            if (entry.isDirectory())
                folders.append(item);
            else
                requireSoon([&] { return DeleteFileW(apiPath(item).c_str()); }, "DeleteFileW", item);
        }
        if (folders.size() == before) {
            requireSoon([&] { return RemoveDirectoryW(apiPath(folder).c_str()); }, "RemoveDirectoryW",
                        folder);
            folders.removeLast();
        }
    }
}

} // namespace

bool isWine()
{
    return unixNameFunction() != nullptr;
}

TestFolder::TestFolder()
{
    requireTestPrefix();
    const QString temporary = QDir::toNativeSeparators(QDir::tempPath());
    m_root = temporary % u"\\larkspur-" % QUuid::createUuid().toString(QUuid::Id128);
    require(CreateDirectoryW(apiPath(m_root).c_str(), nullptr), "CreateDirectoryW", m_root);
}

TestFolder::~TestFolder()
{
    requireBelow(m_root, m_root + QStringLiteral("\\x"));
    for (const QString &link : std::as_const(m_links)) {
        if (isWine()) {
            // Wine itself would remove what the link leads to.
            runUnix(QStringLiteral("/bin/rm"), {unixName(link)});
            waitUntil([&] { return !platform::fileExists(link); }, link);
        } else if (!RemoveDirectoryW(apiPath(link).c_str())) {
            require(DeleteFileW(apiPath(link).c_str()), "DeleteFileW", link);
        }
    }
    removeTree(m_root);
}

QString TestFolder::makeFolder(const QString &relative) const
{
    const QString full = path(relative);
    makeParents(full + u'\\');
    return full;
}

QString TestFolder::makeFile(const QString &relative, const QByteArray &content) const
{
    const QString full = path(relative);
    const platform::FileHandle file = createFile(full);
    DWORD written = 0;
    require(WriteFile(file.get(), content.constData(), static_cast<DWORD>(content.size()), &written, nullptr),
            "WriteFile", full);
    return full;
}

QString TestFolder::makeLargeFile(const QString &relative, quint64 bytes) const
{
    const QString full = path(relative);
    const platform::FileHandle file = createFile(full);
    LARGE_INTEGER end = {};
    end.QuadPart = static_cast<LONGLONG>(bytes);
    require(SetFilePointerEx(file.get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(file.get()),
            "SetEndOfFile", full);
    return full;
}

QString TestFolder::makeHardLink(const QString &relative, const QString &existing) const
{
    const QString full = path(relative);
    makeParents(full);
    require(CreateHardLinkW(apiPath(full).c_str(), apiPath(path(existing)).c_str(), nullptr),
            "CreateHardLinkW", full);
    return full;
}

QString TestFolder::makeLink(const QString &relative, const QString &target)
{
    const QString full = path(relative);
    const QString goal = path(target);
    makeParents(full);
    if (isWine()) {
        // The link does not exist yet and so has no name on the build machine; its folder has.
        const qsizetype name = full.lastIndexOf(u'\\') + 1;
        const QString unixLink = unixName(full.left(name - 1)) + u'/' + full.mid(name);
        runUnix(QStringLiteral("/bin/ln"), {QStringLiteral("-s"), unixName(goal), unixLink});
        waitUntil([&] { return platform::fileExists(full); }, full);
    } else {
        const std::optional<platform::FileFacts> facts = platform::fileFacts(goal);
        const bool folder = facts && (facts->attributes & core::AttributeDirectory) != 0;
        const DWORD flags =
            SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE | (folder ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0);
        require(CreateSymbolicLinkW(apiPath(full).c_str(), goal.toStdWString().c_str(), flags),
                "CreateSymbolicLinkW", full);
    }
    m_links.append(full);
    return full;
}

void TestFolder::setTimes(const QString &relative, quint64 lastWrite, quint64 lastAccess) const
{
    const QString full = path(relative);
    const platform::FileHandle file(CreateFileW(apiPath(full).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ,
                                                nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const FILETIME write = fileTime(lastWrite);
    const FILETIME access = fileTime(lastAccess);
    require(file && SetFileTime(file.get(), nullptr, &access, &write), "SetFileTime", full);
}

} // namespace tests
