// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"

#include <QMap>

#include <functional>

namespace tests
{

inline QByteArray utf16(const QString &text, bool terminated = true)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), (text.size() + (terminated ? 1 : 0)) * 2);
}

inline tracks::RegistryValue textValue(const QString &name, const QString &text)
{
    return {name, tracks::RegistryText, utf16(text)};
}

inline tracks::RegistryValue binaryValue(const QString &name, const QByteArray &data)
{
    return {name, tracks::RegistryBinary, data};
}

// A registry in memory, in which writing to single values can be made to fail.
class MemoryRegistry : public tracks::TraceRegistry
{
public:
    QMap<QString, std::vector<tracks::RegistryValue>> keys; // by their paths
    QString refusedValue;                                   // can be neither set nor deleted
    QStringList log;                                        // of what changes it

    std::optional<tracks::RegistryKey> read(const QString &key) override
    {
        if (!keys.contains(key))
            return std::nullopt;
        tracks::RegistryKey found{key, 77, keys[key], {}};
        for (const QString &other : keys.keys()) {
            if (other.startsWith(key + u'\\') && other.indexOf(u'\\', key.size() + 1) < 0)
                found.subkeys.append(other.sliced(key.size() + 1));
        }
        return found;
    }
    bool deleteTree(const QString &key) override
    {
        log.append(QStringLiteral("tree ") + key);
        bool any = false;
        for (const QString &other : keys.keys()) {
            if (other == key || other.startsWith(key + u'\\'))
                any = keys.remove(other) > 0 || any;
        }
        return any;
    }
    bool deleteSubkey(const QString &parent, const QString &name) override
    {
        log.append(QStringLiteral("subkey ") + name);
        const std::optional<tracks::RegistryKey> key = read(parent + u'\\' + name);
        return key && key->subkeys.isEmpty() && keys.remove(key->path) > 0;
    }
    bool createKey(const QString &key) override
    {
        log.append(QStringLiteral("create ") + key);
        keys[key];
        return true;
    }
    bool setValue(const QString &key, const tracks::RegistryValue &value) override
    {
        log.append(QStringLiteral("set ") + value.name);
        if (value.name == refusedValue)
            return false;
        for (tracks::RegistryValue &old : keys[key]) {
            if (old.name == value.name) {
                old = value;
                return true;
            }
        }
        keys[key].push_back(value);
        return true;
    }
    bool deleteValue(const QString &key, const QString &name) override
    {
        log.append(QStringLiteral("delete ") + name);
        return name != refusedValue && std::erase_if(keys[key], [&](const tracks::RegistryValue &value) {
                                           return value.name == name;
                                       }) > 0;
    }
};

} // namespace tests
