// SPDX-License-Identifier: GPL-3.0-or-later
#include "companions/Glasswick/Launch.h"

#include "automation/engine/ShortcutCommand.h"
#include "automation/engine/Texts.h"
#include "platform/KnownFolders.h"
#include "platform/Text.h"

#include <windows.h>

#include <shellapi.h>

using automation::tr;

namespace agent
{

namespace
{

using platform::wide;

bool isFolder(const QString &path)
{
    const DWORD attributes = GetFileAttributesW(wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isFile(const QString &path)
{
    const DWORD attributes = GetFileAttributesW(wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

QString open(const QString &what, const QString &folder)
{
    SHELLEXECUTEINFOW job = {};
    job.cbSize = sizeof job;
    job.fMask = SEE_MASK_FLAG_NO_UI;
    job.lpVerb = L"open";
    job.lpFile = wide(what);
    job.lpDirectory = folder.isEmpty() ? nullptr : wide(folder);
    job.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&job) ? tr("Opened %1").arg(what)
                                 : tr("%1 did not open: error %2").arg(what).arg(GetLastError());
}

QString builtInPath(const QString &command)
{
    const QString system = platform::knownFolder(platform::KnownFolder::System);
    const QString windows = platform::knownFolder(platform::KnownFolder::Windows);
    for (const QString &folder : {system, windows, system + QStringLiteral("\\WindowsPowerShell\\v1.0")}) {
        const QString path = folder + u'\\' + command + QStringLiteral(".exe");
        if (isFile(path))
            return path;
    }
    return {};
}

QString startIn(const QString &path, const QString &folder)
{
    if (!isFolder(folder))
        return tr("%1 was not started: the folder %2 is not there").arg(path, folder);
    return open(path, folder);
}

} // namespace

QString startBuiltIn(const QString &command, const QString &workingFolder)
{
    const QString path = builtInPath(command);
    if (path.isEmpty())
        return tr("This Windows has no %1").arg(command);
    return startIn(path, workingFolder.isEmpty() ? platform::knownFolder(platform::KnownFolder::Profile)
                                                 : workingFolder);
}

QString startProgram(const QString &path, const QString &workingFolder)
{
    if (!isFile(path))
        return tr("%1 is not there").arg(path);
    return startIn(path, workingFolder.isEmpty() ? path.left(path.lastIndexOf(u'\\') + 1) : workingFolder);
}

QString openFolder(const QString &path)
{
    return isFolder(path) ? open(path, {}) : tr("The folder %1 is not there").arg(path);
}

QString openAddress(const QString &typed)
{
    const QString address = automation::openableAddress(typed);
    return address.isEmpty() ? tr("%1 is no address of a web page").arg(typed) : open(address, {});
}

} // namespace agent
