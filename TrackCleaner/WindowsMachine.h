// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Clear.h"
#include "TrackCleaner/engine/Scan.h"
#include "platform/Guard.h"

// The engine's view of this computer: disk and registry with the rights of the current user.
namespace tracks
{

// Where this Windows keeps the catalogue's items. Does disk I/O; any thread.
Locations windowsLocations();

quint64 currentFileTime();

class WindowsRegistry : public TraceRegistry
{
public:
    std::optional<RegistryKey> read(const QString &key) override;
    bool deleteTree(const QString &key) override;
    bool deleteSubkey(const QString &parent, const QString &name) override;
    bool createKey(const QString &key) override;
    bool setValue(const QString &key, const RegistryValue &value) override;
    bool deleteValue(const QString &key, const QString &name) override;
};

class WindowsRights : public RemovalRights
{
public:
    bool mayRemove(const QString &file) override;
};

// Deletes through the guard: only the listed file, and only if no link leads to it.
class GuardedRemover : public TraceRemover
{
public:
    Outcome remove(const FileToRemove &file) override;

private:
    platform::GuardedErasure m_erasure;
};

} // namespace tracks
