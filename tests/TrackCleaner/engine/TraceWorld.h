// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Scan.h"
#include "tests/TrackCleaner/engine/MemoryRegistry.h"
#include "tests/support/MemoryEnumerator.h"

#include <QSet>

namespace tests
{

inline const QString profile = QStringLiteral("C:\\Users\\ann");
inline const QString recent = profile + QStringLiteral("\\AppData\\Roaming\\Microsoft\\Windows\\recent");
inline const QString explorer = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer");
inline const QString temp = profile + QStringLiteral("\\AppData\\Local\\Temp");

// A computer in memory for scanTraces(), and what the scan told.
class TraceWorld : public tracks::ScanListener, private core::FileProbe, private tracks::RemovalRights
{
public:
    static constexpr quint64 hour = quint64{36'000'000'000};
    static constexpr quint64 now = 1'000'000 * hour;

    MemoryEnumerator disk;
    MemoryRegistry registry;
    core::CancelFlag cancel;
    QSet<QString> behindLinks;
    QSet<QString> foreign; // files that the user may not remove
    QStringList told;
    int cancelAfter = -1; // traces
    tracks::ScanOptions options{.items = {},
                                .locations = {.profile = profile,
                                              .windows = QStringLiteral("C:\\Windows"),
                                              .programData = QStringLiteral("C:\\ProgramData"),
                                              .temporary = temp,
                                              .temporaryTarget = temp},
                                .keepUsedToday = true,
                                .now = now,
                                .readAheadThreads = 0};

    tracks::ScanResult scan(const QList<tracks::Item> &items)
    {
        for (const tracks::Item item : items)
            options.items[tracks::indexOf(item)] = true;
        return tracks::scanTraces(options, {disk, *this, registry, *this}, *this, cancel);
    }

    void itemBegins(tracks::Item) override {}
    void folderEntered(const QString &) override {}
    void traceFound(int traces) override
    {
        if (traces == cancelAfter)
            cancel.set();
    }
    void itemScanned(tracks::Item item, const tracks::ItemTraces &traces) override
    {
        told.append(QStringLiteral("%1:%2").arg(static_cast<int>(item)).arg(traces.count()));
    }

private:
    std::optional<quint32> listedAttributes(const QString &) override { return std::nullopt; }
    std::optional<core::FileFacts> facts(const QString &path) override
    {
        return disk.identity(path) ? std::optional(core::FileFacts{}) : std::nullopt;
    }
    bool isInside(const QString &, const QString &item) override { return !behindLinks.contains(item); }
    bool mayRemove(const QString &file) override { return !foreign.contains(file); }
};

// "path" of every row, with a mark: "!" part of a database, "~" used today, "#" needs an administrator.
inline QStringList rowsOf(const tracks::ItemTraces &traces)
{
    QStringList rows;
    for (std::size_t row = 0; row < traces.count(); ++row)
        rows.append(traces.pathOf(row) +
                    QStringList{QString(), QStringLiteral("!"), QStringLiteral("~"),
                                QStringLiteral("#")}[static_cast<int>(traces.keep(row))]);
    return rows;
}

} // namespace tests
