// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/Com.h"
#include "platform/Text.h"

#include <QDir>

#include <shlobj.h>

namespace systeminfo
{

using platform::ComPointer;
using platform::fromWide;
using platform::wide;

namespace
{

// The strings of a KNOWNFOLDER_DEFINITION must be freed one by one.
struct Definition {
    KNOWNFOLDER_DEFINITION value = {};

    Definition() = default;
    Definition(const Definition &) = delete;
    Definition &operator=(const Definition &) = delete;
    ~Definition()
    {
        for (void *text : {value.pszName, value.pszDescription, value.pszRelativePath, value.pszParsingName,
                           value.pszTooltip, value.pszLocalizedName, value.pszIcon, value.pszSecurity})
            platform::CoTaskMem(text).reset();
    }
};

std::optional<SpecialFolder> folderOf(IKnownFolder *folder)
{
    Definition definition;
    if (FAILED(folder->GetFolderDefinition(&definition.value)) ||
        definition.value.category == KF_CATEGORY_VIRTUAL)
        return {};
    PWSTR path = nullptr;
    const HRESULT result = folder->GetPath(KF_FLAG_DONT_VERIFY, &path);
    const platform::CoTaskMem owner(path);
    if (FAILED(result) || !path || !*path)
        return {};
    return SpecialFolder{fromWide(definition.value.pszName), fromWide(path),
                         definition.value.category != KF_CATEGORY_PERUSER};
}

QString startupFolder(const KNOWNFOLDERID &id)
{
    PWSTR path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &path);
    const platform::CoTaskMem owner(path);
    return SUCCEEDED(result) ? fromWide(path) : QString();
}

// The stored target of a shortcut, without searching for it or showing any UI.
void readLink(const QString &path, StartupFile &file)
{
    ComPointer<IShellLinkW> link;
    ComPointer<IPersistFile> stored;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                link.putVoid())) ||
        FAILED(link->QueryInterface(IID_IPersistFile, stored.putVoid())) ||
        FAILED(stored->Load(wide(path), STGM_READ)))
        return;
    wchar_t text[4096] = {};
    if (SUCCEEDED(link->GetPath(text, MAX_PATH, nullptr, SLGP_RAWPATH)) && *text)
        file.target = fromWide(text);
    *text = 0;
    if (SUCCEEDED(link->GetArguments(text, 4096)))
        file.arguments = fromWide(text);
}

void addFiles(std::vector<StartupFile> &files, const QString &folder, bool common)
{
    constexpr std::size_t maxFiles = 2000;
    const QDir dir(folder);
    for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name)) {
        if (name.compare(QStringLiteral("desktop.ini"), Qt::CaseInsensitive) == 0 || files.size() == maxFiles)
            continue;
        const QString path = QDir::toNativeSeparators(dir.filePath(name));
        StartupFile file{.name = name, .target = path, .common = common};
        if (name.endsWith(QStringLiteral(".lnk"), Qt::CaseInsensitive))
            readLink(path, file);
        files.push_back(std::move(file));
    }
}

} // namespace

std::vector<SpecialFolder> WindowsMachine::specialFolders()
{
    std::vector<SpecialFolder> folders;
    ComPointer<IKnownFolderManager> manager;
    if (FAILED(CoCreateInstance(CLSID_KnownFolderManager, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IKnownFolderManager, manager.putVoid())))
        return folders;
    KNOWNFOLDERID *ids = nullptr;
    UINT count = 0;
    const HRESULT result = manager->GetFolderIds(&ids, &count);
    const platform::CoTaskMem owner(ids);
    if (FAILED(result))
        return folders;
    for (UINT i = 0; i < count; ++i) {
        ComPointer<IKnownFolder> folder;
        if (FAILED(manager->GetFolder(ids[i], folder.put())))
            continue;
        if (auto found = folderOf(folder.get()))
            folders.push_back(std::move(*found));
    }
    return folders;
}

std::vector<StartupFile> WindowsMachine::startupFiles()
{
    std::vector<StartupFile> files;
    addFiles(files, startupFolder(FOLDERID_Startup), false);
    addFiles(files, startupFolder(FOLDERID_CommonStartup), true);
    return files;
}

} // namespace systeminfo
