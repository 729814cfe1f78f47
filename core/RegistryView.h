// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace core
{

// A value of the Windows registry as it is stored: type number of winnt.h and bytes.
struct RegistryValue {
    static constexpr quint32 none = 0, text = 1, expandableText = 2, binary = 3, dword = 4, multiText = 7,
                             qword = 11;

    quint32 type = none; // none: there is no such value
    QByteArray bytes;

    static RegistryValue ofText(const QString &value);
    static RegistryValue ofNumber(quint32 value);

    bool exists() const { return type != none; }
    // A text up to its first null character; binary bytes are taken as UTF-16, as drivers store them. Empty
    // for other types.
    QString toText() const;
    // A DWORD or QWORD, or 4 or 8 binary bytes. None for anything else.
    std::optional<quint64> toNumber() const;
};

// Reads the registry. Nothing is written, and what is missing or locked reads as empty.
class RegistryView
{
public:
    enum class Hive { CurrentUser, LocalMachine };
    // Which of the two sets of keys a 64-bit Windows keeps for programs.
    enum class Bits { Is64, Is32 };

    virtual ~RegistryView() = default;

    // An empty name is the key's default value.
    virtual RegistryValue value(Hive hive, const QString &path, const QString &name,
                                Bits bits = Bits::Is64) = 0;
    virtual QStringList subkeys(Hive hive, const QString &path, Bits bits = Bits::Is64) = 0;
    virtual QStringList valueNames(Hive hive, const QString &path, Bits bits = Bits::Is64) = 0;
};

} // namespace core
