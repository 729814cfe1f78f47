// SPDX-License-Identifier: GPL-3.0-or-later
#include "Troubleshooter/machine/WindowsExplorer.h"

#include "platform/GuardedText.h"
#include "platform/Handle.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/Programs.h"
#include "platform/RegistryReader.h"
#include "platform/Text.h"
#include "platform/Win32Enumerator.h"
#include "settings/Keys.h"
#include "settings/Values.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QThread>

#include <restartmanager.h>

#include <array>
#include <vector>

namespace repair
{

namespace
{

constexpr int maxWait = 15'000; // ms, for Explorer to exit or to start
constexpr int poll = 200;

constexpr settings::Flag ended{settings::keys::troubleshooter, u"ExplorerEnded"};

struct RestartSessionTraits {
    using Raw = DWORD;
    static Raw none() noexcept { return 0xffffffff; }
    static void close(Raw raw) noexcept { RmEndSession(raw); }
};
using RestartSession = platform::UniqueHandle<RestartSessionTraits>;

QString explorerPath()
{
    return platform::knownFolder(platform::KnownFolder::Windows) + QStringLiteral("\\explorer.exe");
}

template <class Condition>
bool await(Condition condition)
{
    for (const QDeadlineTimer end(maxWait); !condition(); QThread::msleep(poll)) {
        if (end.hasExpired())
            return false;
    }
    return true;
}

BOOL CALLBACK countFolderWindow(HWND window, LPARAM count)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    if (IsWindowVisible(window) && platform::fromWide(name.data()) == QLatin1String("CabinetWClass"))
        ++*reinterpret_cast<int *>(count);
    return TRUE;
}

std::vector<RM_UNIQUE_PROCESS> explorers()
{
    std::vector<RM_UNIQUE_PROCESS> processes;
    for (const platform::RunningProgram &program : platform::runningFrom(explorerPath()))
        processes.push_back(
            {program.process,
             {static_cast<DWORD>(program.started), static_cast<DWORD>(program.started >> 32)}});
    return processes;
}

} // namespace

// Whether the desktop belongs to Explorer and not to another shell.
bool WindowsExplorer::runs()
{
    DWORD owner = 0;
    GetWindowThreadProcessId(GetShellWindow(), &owner);
    for (const platform::RunningProgram &program : platform::runningFrom(explorerPath())) {
        if (owner != 0 && program.process == owner)
            return true;
    }
    return false;
}

int WindowsExplorer::folderWindows()
{
    int count = 0;
    EnumWindows(countFolderWindow, reinterpret_cast<LPARAM>(&count));
    return count;
}

bool WindowsExplorer::isCopying()
{
    return FindWindowW(L"OperationStatusWindow", nullptr) != nullptr;
}

// The Restart Manager asks programs to exit as an installer would, so that they can save their state.
bool WindowsExplorer::end(const core::CancelFlag &)
{
    std::array<wchar_t, CCH_RM_SESSION_KEY + 1> key{};
    RestartSession session;
    std::vector<RM_UNIQUE_PROCESS> processes = explorers();
    return RmStartSession(session.put(), 0, key.data()) == ERROR_SUCCESS &&
           RmRegisterResources(session.get(), 0, nullptr, static_cast<UINT>(processes.size()),
                               processes.data(), 0, nullptr) == ERROR_SUCCESS &&
           RmShutdown(session.get(), 0, nullptr) == ERROR_SUCCESS && await([this] { return !runs(); });
}

// Winlogon may have restarted it already.
bool WindowsExplorer::start()
{
    if (!runs())
        QProcess::startDetached(explorerPath(), {});
    return await([this] { return runs(); });
}

bool WindowsExplorer::isDesktopShown()
{
    return GetShellWindow() != nullptr;
}

bool WindowsExplorer::isAwaited()
{
    return ended.read();
}

void WindowsExplorer::setAwaited(bool awaited)
{
    if (!awaited)
        settings::deleteValue(ended.key, ended.name);
    else if (!ended.write(true))
        qDebug("Windows did not keep that Explorer is to start again");
}

WindowsCaches::WindowsCaches(QString localData) : m_localData(std::move(localData)) {}

std::optional<QList<CacheFile>> WindowsCaches::list(CacheKind kind)
{
    const QString folder = m_localData + QStringLiteral("\\Microsoft\\Windows\\Explorer");
    const QString begin =
        kind == CacheKind::Icons ? QStringLiteral("iconcache_") : QStringLiteral("thumbcache_");
    QList<CacheFile> files;
    const core::CancelFlag never;
    platform::Win32Enumerator enumerator;
    core::DirectoryListing listing;
    const auto take = [&](const QString &parent, auto isOne) {
        enumerator.list(parent, listing, never);
        for (std::size_t index = 0; index < listing.size(); ++index) {
            const core::DirectoryEntry entry = listing.at(index);
            if (!entry.isDirectory() && isOne(entry.name))
                files.append({parent + u'\\' + entry.name.toString(), entry.size, entry.lastWriteTime});
        }
        return listing.readable;
    };
    const bool readable = take(folder, [&begin](QStringView name) {
        return name.startsWith(begin, Qt::CaseInsensitive) &&
               name.endsWith(QLatin1String(".db"), Qt::CaseInsensitive);
    });
    // An account that has never opened a folder has no cache folder.
    if (!readable && platform::fileExists(folder))
        return std::nullopt;
    if (kind == CacheKind::Icons)
        take(m_localData, [](QStringView name) {
            return name.compare(QLatin1String("IconCache.db"), Qt::CaseInsensitive) == 0;
        });
    return files;
}

// Helper processes of Explorer hold the files a little longer than Explorer itself.
QString WindowsCaches::erase(const CacheFile &file)
{
    const platform::ShownItem item{.root = m_localData,
                                   .path = file.path,
                                   .size = file.size,
                                   .lastWriteTime = file.lastWriteTime,
                                   .identity = {}};
    platform::Guarded result = platform::Guarded::InUse;
    for (int attempt = 0; attempt < 10 && result == platform::Guarded::InUse; ++attempt) {
        if (attempt > 0)
            QThread::msleep(poll);
        result = platform::GuardedErasure().erase(item);
    }
    return result == platform::Guarded::Vanished ? QString() : platform::guardedText(result);
}

StoreFacts WindowsStore::facts()
{
    using Hive = core::RegistryView::Hive;
    platform::RegistryReader registry;
    StoreFacts facts;
    for (const QString &package :
         registry.subkeys(Hive::CurrentUser,
                          QStringLiteral("Software\\Classes\\Local Settings\\Software\\Microsoft\\Windows\\"
                                         "CurrentVersion\\AppModel\\Repository\\Packages"))) {
        if (package.startsWith(QLatin1String("Microsoft.WindowsStore_"), Qt::CaseInsensitive))
            facts.installed = true;
    }
    facts.toolIsThere = platform::fileExists(platform::knownFolder(platform::KnownFolder::System) +
                                             QStringLiteral("\\wsreset.exe"));

    const QString cache = platform::knownFolder(platform::KnownFolder::LocalAppData) +
                          QStringLiteral("\\Packages\\Microsoft.WindowsStore_8wekyb3d8bbwe\\LocalCache");
    const core::CancelFlag never;
    platform::Win32Enumerator enumerator;
    QStringList folders{cache};
    constexpr qsizetype maxFolders = 2000;
    for (qsizetype at = 0; at < folders.size() && at < maxFolders; ++at) {
        core::DirectoryListing listing;
        enumerator.list(folders.at(at), listing, never);
        for (std::size_t index = 0; index < listing.size(); ++index) {
            const core::DirectoryEntry entry = listing.at(index);
            if (entry.isDirectory() && !entry.mayBeLink())
                folders.append(folders.at(at) + u'\\' + entry.name.toString());
            else if (!entry.isDirectory())
                facts.cacheBytes += entry.size;
        }
    }

    for (const auto &[key, title] :
         {std::pair("wuauserv", "Windows Update"), std::pair("AppXSvc", "AppX Deployment Service"),
          std::pair("ClipSVC", "Client License Service"),
          std::pair("InstallService", "Microsoft Store Install Service")}) {
        const auto start =
            registry
                .value(Hive::LocalMachine,
                       QStringLiteral("SYSTEM\\CurrentControlSet\\Services\\") + QLatin1String(key),
                       QStringLiteral("Start"))
                .toNumber();
        if (start)
            facts.services.append({QString::fromLatin1(title), *start == SERVICE_DISABLED});
    }
    return facts;
}

} // namespace repair
