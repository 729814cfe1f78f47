// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"

#include <QHash>

namespace tests
{

class FakeNetwork : public repair::Network
{
public:
    std::optional<QList<repair::Adapter>> adapters() override { return found; }
    repair::Connectivity connectivity() override { return state; }
    repair::Proxy proxy() override { return proxyInUse; }
    repair::Lookup lookUp(const QString &, const core::CancelFlag &) override { return lookup; }
    bool connects(const QString &, quint16, const core::CancelFlag &) override { return answers; }

    std::optional<QList<repair::Adapter>> found =
        QList<repair::Adapter>{{QStringLiteral("Ethernet"),
                                true,
                                true,
                                {QStringLiteral("192.168.1.5"), QStringLiteral("fe80::1")},
                                {QStringLiteral("192.168.1.1")},
                                {QStringLiteral("192.168.1.1")}}};
    repair::Connectivity state = repair::Connectivity::Internet;
    repair::Proxy proxyInUse;
    repair::Lookup lookup{true, 12, {}};
    bool answers = true;
};

class FakeTools : public repair::Tools
{
public:
    QDateTime now() override { return QDateTime(QDate(2026, 11, 22), QTime(9, 5)); }
    repair::ToolRun run(repair::Tool tool, const QString &file, const core::CancelFlag &) override
    {
        ran.append(tool);
        const repair::ToolRun answer = answers.value(tool, {repair::ToolRun::State::Ended, 0, "text"});
        if (!file.isEmpty() && answer.succeeded())
            files.insert(file, "exported");
        return answer;
    }
    QString restoreFolder() override { return folder; }
    bool save(const QString &path, const QByteArray &bytes) override
    {
        files.insert(path, bytes);
        return true;
    }
    bool holdsSomething(const QString &path) override { return !files.value(path).isEmpty(); }

    QHash<repair::Tool, repair::ToolRun> answers;
    QString folder = QStringLiteral("C:\\Restore");
    QList<repair::Tool> ran;
    QHash<QString, QByteArray> files;
};

class FakeCaches : public repair::Caches
{
public:
    std::optional<QList<repair::CacheFile>> list(repair::CacheKind) override { return files; }
    QString erase(const repair::CacheFile &file) override
    {
        erased.append(file.path);
        if (locked.contains(file.path))
            return QStringLiteral("in use");
        if (files)
            files->removeIf([&file](const repair::CacheFile &other) { return other.path == file.path; });
        return {};
    }

    std::optional<QList<repair::CacheFile>> files = QList<repair::CacheFile>{
        {QStringLiteral("C:\\a.db"), 2048, 1}, {QStringLiteral("C:\\b.db"), 1024, 1}};
    QStringList locked;
    QStringList erased;
};

class FakeExplorer : public repair::Explorer
{
public:
    bool runs() override { return running; }
    int folderWindows() override { return windows; }
    bool isCopying() override { return copying; }
    bool end(const core::CancelFlag &) override
    {
        calls.append(awaited ? QStringLiteral("end") : QStringLiteral("end, and nobody knows"));
        running = running && !ends;
        return ends;
    }
    bool start() override
    {
        calls.append(QStringLiteral("start"));
        running = starts;
        return running;
    }
    bool isDesktopShown() override { return running || otherShell; }
    bool isAwaited() override { return awaited; }
    void setAwaited(bool is) override { awaited = is; }

    bool running = true;
    int windows = 0;
    bool copying = false;
    bool ends = true;
    bool starts = true;
    bool otherShell = false;
    bool awaited = false;
    QStringList calls;
};

class FakeStore : public repair::Store
{
public:
    repair::StoreFacts facts() override { return answer; }

    repair::StoreFacts answer{true, true, 4096, {{QStringLiteral("Windows Update"), false}}};
};

} // namespace tests
