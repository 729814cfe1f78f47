// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The system as the repairs see it. Implemented in Troubleshooter/machine/ and by the fakes of the tests. Any
// thread.
namespace repair
{

struct Adapter {
    QString name; // "Ethernet"
    bool up = false;
    bool automatic = false; // by DHCP
    QStringList addresses;
    QStringList gateways;
    QStringList nameServers;
};

enum class Connectivity { Unknown, None, Local, SignIn, Internet };

struct Proxy {
    QString server; // "proxy:8080"; empty if there is none
    QString script; // address of an automatic configuration script
};

struct Lookup {
    bool answered = false;
    int milliseconds = 0;
    QString problem; // Windows' error text
};

class Network
{
public:
    virtual ~Network() = default;

    // Without loopback adapters. nullopt if Windows does not provide the list.
    virtual std::optional<QList<Adapter>> adapters() = 0;
    // Windows' own connectivity status.
    virtual Connectivity connectivity() = 0;
    virtual Proxy proxy() = 0;
    // Both bypass all caches, and take a few seconds at most.
    virtual Lookup lookUp(const QString &host, const core::CancelFlag &cancel) = 0;
    virtual bool connects(const QString &host, quint16 port, const core::CancelFlag &cancel) = 0;
};

// The Windows tools used for repairs, each with fixed arguments.
enum class Tool {
    FlushDns,
    RenewAddresses,
    SaveSockets,
    ResetSockets,
    SaveAddresses,
    ResetAddresses,
    ResetStore
};

struct ToolRun {
    enum class State { Ended, Refused, NotStarted, TookTooLong, Cancelled };
    State state = State::NotStarted;
    int exitCode = 0;
    QByteArray output; // only from tools that are not elevated

    bool succeeded() const { return state == State::Ended && exitCode == 0; }
};

class Tools
{
public:
    virtual ~Tools() = default;

    virtual QDateTime now() = 0;
    // `file`: for tools that write one.
    virtual ToolRun run(Tool tool, const QString &file, const core::CancelFlag &cancel) = 0;
    // The folder for backup files; empty if there is none.
    virtual QString restoreFolder() = 0;
    // Creates the folder; never replaces a file. False on failure.
    virtual bool save(const QString &path, const QByteArray &bytes) = 0;
    // Whether the file exists and is not empty.
    virtual bool holdsSomething(const QString &path) = 0;
};

enum class CacheKind { Icons, Thumbnails };

struct CacheFile {
    QString path;
    quint64 size = 0;
    quint64 lastWriteTime = 0; // FILETIME
};

class Caches
{
public:
    virtual ~Caches() = default;

    // nullopt if the folder cannot be read.
    virtual std::optional<QList<CacheFile>> list(CacheKind kind) = 0;
    // Deletes the file if it is unchanged since it was listed. Empty on success, otherwise the reason as the
    // end of a sentence.
    virtual QString erase(const CacheFile &file) = 0;
};

// Windows Explorer, which shows desktop, taskbar and folders.
class Explorer
{
public:
    virtual ~Explorer() = default;

    virtual bool runs() = 0;
    virtual int folderWindows() = 0;
    // Whether a copy, move or delete operation is in progress.
    virtual bool isCopying() = 0;
    // Asks it to exit, and waits. Never terminates it.
    virtual bool end(const core::CancelFlag &cancel) = 0;
    // Starts it if it is not running, and waits for its taskbar.
    virtual bool start() = 0;
    // Whether any program shows the desktop: Explorer or another shell.
    virtual bool isDesktopShown() = 0;
    // Whether a repair has ended Explorer, and it has not been seen running since. Persistent across
    // processes.
    virtual bool isAwaited() = 0;
    virtual void setAwaited(bool awaited) = 0;
};

struct StoreService {
    QString title;
    bool disabled = false;
};

struct StoreFacts {
    bool installed = false;
    bool toolIsThere = false;
    quint64 cacheBytes = 0;
    QList<StoreService> services; // the services it needs, as far as they exist
};

class Store
{
public:
    virtual ~Store() = default;

    virtual StoreFacts facts() = 0;
};

} // namespace repair
