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
    QString name; // empty: the key's default value
    quint32 type = RegistryNone;
    QByteArray data; // as stored, with the terminator of a text

    bool operator==(const RegistryValue &) const = default;
};

struct RegistryKey {
    QString path;              // below HKEY_CURRENT_USER
    quint64 lastWriteTime = 0; // FILETIME
    std::vector<RegistryValue> values;
    QStringList subkeys; // names
};

// The current user's registry, as far as the traces need it. Any thread.
class TraceRegistry
{
public:
    virtual ~TraceRegistry() = default;

    // Empty when the key is missing or cannot be read.
    virtual std::optional<RegistryKey> read(const QString &key) = 0;

    // Everything below the key goes too.
    virtual bool deleteTree(const QString &key) = 0;
    // Fails when the subkey has subkeys of its own.
    virtual bool deleteSubkey(const QString &parent, const QString &name) = 0;
    // True also when the key is there already; it then stays as it is.
    virtual bool createKey(const QString &key) = 0;

    virtual bool setValue(const QString &key, const RegistryValue &value) = 0;
    virtual bool deleteValue(const QString &key, const QString &name) = 0;
};

// The key and, with `subkeys`, all keys below it, a parent before its children. Ends at a depth that no trace
// of Windows has, since a registry link may lead to a parent of itself.
std::vector<RegistryKey> readKeys(TraceRegistry &registry, const QString &key, bool subkeys);

} // namespace tracks
