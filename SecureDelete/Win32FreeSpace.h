// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/FreeSpace.h"
#include "platform/Handle.h"

#include <memory>

namespace securedelete
{

// The folder on a drive that fills its free space: "C:\Fernlight Larkspur Free Space", with numbered files.
class Win32FreeSpace : public FreeSpaceFolder
{
public:
    // `place` is the folder in which it is created: the drive's root, except in tests.
    explicit Win32FreeSpace(const QString &place);
    ~Win32FreeSpace() override;

    QString path() const { return m_path; }
    // Does disk I/O. False if it cannot be created, or exists and contains files that are not ours.
    bool make();

    quint64 freeBytes() override;
    Target *newFile(int number) override;
    bool removeAll() override;

    // Removes what an earlier run left, if `path` can be such a folder: only the numbered files in it, then
    // the folder if it is empty. False if something of ours remains.
    static bool removeLeftOver(const QString &path);

private:
    const QString m_place;
    const QString m_path;
    std::unique_ptr<Target> m_target;
    platform::FileHandle m_file;
};

} // namespace securedelete
