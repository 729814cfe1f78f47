// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/KnownFolders.h"

#include "platform/Com.h"
#include "platform/Text.h"

#include <knownfolders.h>
#include <shlobj.h>

namespace platform
{

namespace
{

const KNOWNFOLDERID &folderId(KnownFolder folder)
{
    switch (folder) {
    case KnownFolder::Desktop:
        return FOLDERID_Desktop;
    case KnownFolder::Downloads:
        return FOLDERID_Downloads;
    case KnownFolder::Documents:
        return FOLDERID_Documents;
    case KnownFolder::Pictures:
        return FOLDERID_Pictures;
    case KnownFolder::Music:
        return FOLDERID_Music;
    case KnownFolder::Videos:
        return FOLDERID_Videos;
    case KnownFolder::ProgramFiles:
        return FOLDERID_ProgramFiles;
    case KnownFolder::ProgramFilesX86:
        return FOLDERID_ProgramFilesX86;
    case KnownFolder::ProgramData:
        return FOLDERID_ProgramData;
    case KnownFolder::RoamingAppData:
        return FOLDERID_RoamingAppData;
    case KnownFolder::LocalAppData:
        return FOLDERID_LocalAppData;
    case KnownFolder::Windows:
        return FOLDERID_Windows;
    case KnownFolder::System:
        return FOLDERID_System;
    case KnownFolder::Recent:
        return FOLDERID_Recent;
    case KnownFolder::StartMenuPrograms:
        return FOLDERID_Programs;
    case KnownFolder::Profile:
        break;
    }
    return FOLDERID_Profile;
}

} // namespace

QString knownFolder(KnownFolder folder)
{
    PWSTR path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(folderId(folder), KF_FLAG_DONT_VERIFY, nullptr, &path);
    const CoTaskMem owner(path); // must be freed after a failure too
    return SUCCEEDED(result) ? fromWide(path) : QString();
}

} // namespace platform
