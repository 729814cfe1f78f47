// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace core
{

// A registry value as stored: type number (winnt.h) and bytes.
struct RegistryValue {
    static constexpr quint32 none = 0, text = 1, expandableText = 2, binary = 3, dword = 4, multiText = 7,
                             qword = 11;

    quint32 type = none; // none if the value does not exist
    QByteArray bytes;

    static RegistryValue ofText(const QString &value);
    static RegistryValue ofNumber(quint32 value);

    bool exists() const { return type != none; }
    // A text up to its first NUL; binary data is taken as UTF-16, as drivers store it. Empty for other types.
    QString toText() const;
    // A DWORD or QWORD, or 4 or 8 binary bytes. nullopt for anything else.
    std::optional<quint64> toNumber() const;
};

// Read access to the registry. Missing and inaccessible values read as empty.
class RegistryView
{
public:
    enum class Hive { CurrentUser, LocalMachine };
    // The 64-bit or 32-bit view of the registry.
    enum class Bits { Is64, Is32 };

    virtual ~RegistryView() = default;

    // An empty name is the key's default value.
    virtual RegistryValue value(Hive hive, const QString &path, const QString &name,
                                Bits bits = Bits::Is64) = 0;
    virtual QStringList subkeys(Hive hive, const QString &path, Bits bits = Bits::Is64) = 0;
    virtual QStringList valueNames(Hive hive, const QString &path, Bits bits = Bits::Is64) = 0;
};

} // namespace core
