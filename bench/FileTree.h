// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Handle.h"

#include <QString>
#include <QTemporaryDir>

#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

// Trees of many small files that benches make and remove again.
namespace bench
{

// A folder of its own for each use.
class FreshFolder
{
public:
    void make() { m_folder = std::make_unique<QTemporaryDir>(); }
    QString path() const { return m_folder->path().replace(u'/', u'\\'); }
    std::wstring text() const { return path().toStdWString(); }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

// Empty files.
inline void makeTree(const std::wstring &root, int files, int filesInAFolder = 500)
{
    std::wstring folder;
    for (int index = 0; index < files; ++index) {
        if (index % filesInAFolder == 0) {
            folder = root + L"\\" + std::to_wstring(index);
            CreateDirectoryW(folder.c_str(), nullptr);
        }
        const std::wstring path = folder + L"\\file" + std::to_wstring(index) + L".tmp";
        const platform::FileHandle made(
            CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    }
}

// The bare loop: every file is removed as soon as it is found. Returns their number.
inline int eraseWhileWalking(const std::wstring &folder)
{
    WIN32_FIND_DATAW found;
    int erased = 0;
    const platform::FindHandle search(FindFirstFileW((folder + L"\\*").c_str(), &found));
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
            erased += eraseWhileWalking(folder + L"\\" + name);
        else
            erased += DeleteFileW((folder + L"\\" + name).c_str());
    } while (FindNextFileW(search.get(), &found));
    return erased;
}

inline void expectErased(int erased, int files)
{
    if (erased != files)
        std::printf("%d of %d files were erased\n", erased, files);
}

} // namespace bench
