// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tracks
{

// Types of registry values as Windows numbers them (winnt.h, REG_*).
enum RegistryType : quint32 {
    RegistryNone = 0,
    RegistryText = 1,
    RegistryBinary = 3,
    RegistryDword = 4,
};

struct RegistryValue {
    QString name; // empty for the key's default value
    quint32 type = RegistryNone;
    QByteArray data; // as stored, including a string's terminator

    bool operator==(const RegistryValue &) const = default;
};

struct RegistryKey {
    QString path;              // below HKEY_CURRENT_USER
    quint64 lastWriteTime = 0; // FILETIME
    std::vector<RegistryValue> values;
    QStringList subkeys; // their names
};

// Access to the current user's registry. Any thread.
class TraceRegistry
{
public:
    virtual ~TraceRegistry() = default;

    // nullopt if the key is missing or cannot be read.
    virtual std::optional<RegistryKey> read(const QString &key) = 0;

    // Deletes the key and everything below it.
    virtual bool deleteTree(const QString &key) = 0;
    // Fails if the subkey has subkeys of its own.
    virtual bool deleteSubkey(const QString &parent, const QString &name) = 0;
    // Also true if the key exists already; it is then left unchanged.
    virtual bool createKey(const QString &key) = 0;

    virtual bool setValue(const QString &key, const RegistryValue &value) = 0;
    virtual bool deleteValue(const QString &key, const QString &name) = 0;
};

// The key and, with `subkeys`, all keys below it, parents before children. The depth is limited, since a
// registry link may lead to one of its own parents.
std::vector<RegistryKey> readKeys(TraceRegistry &registry, const QString &key, bool subkeys);

} // namespace tracks
