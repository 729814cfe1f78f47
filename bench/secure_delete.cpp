// SPDX-License-Identifier: GPL-3.0-or-later

// Destroying files with the method of 3 passes, against bare loops: large files against a write-through loop
// of the same passes and chunks, small ones against open, write, 26 renames, delete. Both take turns on fresh
// files, in a folder that this program makes; medians are compared.
// usage: secure_delete [MEGABYTES [SMALL_FILES [ROUNDS]]]

#include "SecureDelete/Win32Disk.h"
#include "SecureDelete/engine/Shred.h"
#include "bench/FileTree.h"
#include "bench/Turns.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace
{

using namespace securedelete;

constexpr int passes = 3;
constexpr DWORD chunk = 65'536;
constexpr quint64 largeFile = 512 << 20; // so that renaming does not count
constexpr quint64 smallFile = 4096;
constexpr int filesInAFolder = 100; // Wine reads a whole folder for each rename

class Silent : public ShredListener
{
public:
    void bytesWritten(quint64) override {}
    void bytesLeftOut(quint64) override { std::puts("something was left"); }
    void stepDone() override {}
    void itemBegins(const QString &, int) override {}
    void rowDestroyed(int) override {}
};

void noLog(QtMsgType, const QMessageLogContext &, const QString &) {}

std::wstring nameOf(int index)
{
    return L"file" + std::to_wstring(index) + L".tmp";
}

std::wstring folderOf(const std::wstring &root, int index)
{
    return root + L'\\' + std::to_wstring(index / filesInAFolder);
}

void makeFiles(const std::wstring &root, int files, quint64 size)
{
    const std::vector<char> data(std::min<quint64>(size, 16 << 20), 'x');
    for (int index = 0; index < files; ++index) {
        const std::wstring folder = folderOf(root, index);
        if (index % filesInAFolder == 0)
            CreateDirectoryW(folder.c_str(), nullptr);
        const HANDLE file = CreateFileW((folder + L'\\' + nameOf(index)).c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_NEW, 0, nullptr);
        DWORD written = 0;
        for (quint64 done = 0; done < size; done += written)
            WriteFile(file, data.data(), static_cast<DWORD>(data.size()), &written, nullptr);
        FlushFileBuffers(file);
        CloseHandle(file);
    }
}

void bareRange(HANDLE file, quint64 offset, quint64 size, const std::vector<char> &data)
{
    SetFilePointer(file, static_cast<LONG>(offset), nullptr, FILE_BEGIN);
    for (quint64 done = 0; done < size; done += chunk) {
        const DWORD length = size - done < chunk ? static_cast<DWORD>(size - done) : chunk;
        for (int pass = 0; pass < passes; ++pass) {
            if (pass > 0)
                SetFilePointer(file, -static_cast<LONG>(length), nullptr, FILE_CURRENT);
            DWORD written = 0;
            WriteFile(file, data.data() + static_cast<std::size_t>(pass) * chunk, length, &written, nullptr);
        }
    }
}

// What overwriting alone costs: the same writes, last byte first, and nothing else.
void bareOverwrite(const std::wstring &path, quint64 size, const std::vector<char> &data)
{
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_WRITE_THROUGH, nullptr);
    bareRange(file, size - 1, 1, data);
    bareRange(file, 0, size - 1, data);
    CloseHandle(file);
}

void bareShred(const std::wstring &root, int files, quint64 size, bool rename)
{
    const std::vector<char> data(passes * chunk, 'y'); // a buffer for each pass
    for (int index = 0; index < files; ++index) {
        const std::wstring folder = folderOf(root, index);
        std::wstring path = folder + L'\\' + nameOf(index);
        bareOverwrite(path, size, data);
        for (wchar_t letter = L'A'; rename && letter <= L'Z'; ++letter) {
            std::wstring name = nameOf(index);
            for (wchar_t &unit : name)
                unit = unit == L'.' ? unit : letter;
            const std::wstring renamed = folder + L'\\' + name;
            MoveFileW(path.c_str(), renamed.c_str());
            path = renamed;
        }
        DeleteFileW(path.c_str());
    }
}

void shred(const QString &root, PassBuffers &buffers)
{
    Win32Disk disk;
    Silent listener;
    const core::CancelFlag never;
    core::DirectoryListing folders, files;
    disk.list(root, folders, never);
    std::vector<ShredRow> rows;
    for (std::size_t index = 0; index < folders.size(); ++index) {
        const QString folder = root + u'\\' + folders.at(index).name.toString();
        disk.list(folder, files, never);
        for (std::size_t file = 0; file < files.size(); ++file)
            rows.push_back({itemOf(root, folder, files.at(file)), true});
    }
    const ShredResult result = shredRows(rows, {.method = Method::Dod3}, disk, buffers, listener, never);
    if (result.rowsLeft > 0)
        std::printf("%d files were left\n", result.rowsLeft);
}

void compare(const char *what, int files, quint64 size, int rounds)
{
    bench::FreshFolder folder;
    const auto make = [&] {
        folder.make();
        makeFiles(folder.text(), files, size);
    };
    bench::takeTurns(what,
                     {"bare loop", make, [&] { bareShred(folder.text(), files, size, size == smallFile); }},
                     {"secure delete", make, [&] { shred(folder.path(), processBuffers()); }}, rounds);
}

} // namespace

int main(int argc, char **argv)
{
    const int megabytes = argc > 1 ? std::atoi(argv[1]) : 1024;
    const int smallFiles = argc > 2 ? std::atoi(argv[2]) : 20'000;
    const int rounds = argc > 3 ? std::atoi(argv[3]) : 3;
    // The lines for the debug log go nowhere, as in a program that nobody debugs.
    qInstallMessageHandler(noLog);
    compare("large files", static_cast<int>((quint64{1} << 20) * static_cast<quint64>(megabytes) / largeFile),
            largeFile, rounds);
    compare("small files", smallFiles, smallFile, rounds);
}
