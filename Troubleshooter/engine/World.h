// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CancelFlag.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// Windows as the repairs see it. Implementations: Troubleshooter/machine/, and the fakes of the tests. Any
// thread.
namespace repair
{

struct Adapter {
    QString name; // "Ethernet"
    bool up = false;
    bool automatic = false; // gets its address from the router
    QStringList addresses;
    QStringList gateways;
    QStringList nameServers;
};

enum class Connectivity { Unknown, None, Local, SignIn, Internet };

struct Proxy {
    QString server; // "proxy:8080"; empty for none
    QString script; // address of the script that chooses one
};

struct Lookup {
    bool answered = false;
    int milliseconds = 0;
    QString problem; // in Windows' words
};

class Network
{
public:
    virtual ~Network() = default;

    // Without those of the PC itself. Empty when Windows does not tell.
    virtual std::optional<QList<Adapter>> adapters() = 0;
    // What Windows itself has found out.
    virtual Connectivity connectivity() = 0;
    virtual Proxy proxy() = 0;
    // Both past every cache, and for at most a few seconds.
    virtual Lookup lookUp(const QString &host, const core::CancelFlag &cancel) = 0;
    virtual bool connects(const QString &host, quint16 port, const core::CancelFlag &cancel) = 0;
};

// The programs of Windows that repair it, each with arguments of its own that nobody chooses.
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
    QByteArray output; // of those that are not elevated

    bool succeeded() const { return state == State::Ended && exitCode == 0; }
};

class Tools
{
public:
    virtual ~Tools() = default;

    virtual QDateTime now() = 0;
    // `file`: for those that write one.
    virtual ToolRun run(Tool tool, const QString &file, const core::CancelFlag &cancel) = 0;
    // Where restore files go; empty when there is no such place.
    virtual QString restoreFolder() = 0;
    // Makes the folder; nothing is replaced. False when it did not work.
    virtual bool save(const QString &path, const QByteArray &bytes) = 0;
    // Whether a file is there that holds something.
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

    // Empty when the folder cannot be read.
    virtual std::optional<QList<CacheFile>> list(CacheKind kind) = 0;
    // Why the file, as it was listed, is still there, as the end of a sentence; empty when it is gone.
    virtual QString erase(const CacheFile &file) = 0;
};

// The program that shows desktop, taskbar and folders.
class Explorer
{
public:
    virtual ~Explorer() = default;

    virtual bool runs() = 0;
    virtual int folderWindows() = 0;
    // It copies, moves or removes files at this moment.
    virtual bool isCopying() = 0;
    // Asks it to end, and waits. Never by force.
    virtual bool end(const core::CancelFlag &cancel) = 0;
    // Starts it, where it does not run, and waits for its taskbar.
    virtual bool start() = 0;
    // Some program shows the desktop: this one, or another shell.
    virtual bool isDesktopShown() = 0;
    // That a repair has ended it, and that it has not been seen to run since. Outlives this process.
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
    QList<StoreService> services; // those that it needs, as far as this Windows has them
};

class Store
{
public:
    virtual ~Store() = default;

    virtual StoreFacts facts() = 0;
};

} // namespace repair
