// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <initializer_list>
#include <optional>
#include <utility>

namespace core
{

// One object of a WMI answer: those of the properties asked for that could be read, by name. A value is a
// bool, a qint32 (32-bit integers with and without a sign), a double, a QString (64-bit integers, too: WMI
// hands them out as texts) or a QStringList.
class WmiRow
{
public:
    WmiRow() = default;
    WmiRow(std::initializer_list<std::pair<QString, QVariant>> values);

    void set(const QString &name, const QVariant &value) { m_values.insert(name, value); }
    bool has(const QString &name) const { return m_values.contains(name); }

    // Empty when it was not read; a number in decimal.
    QString text(const QString &name) const;
    // As they came; a text is taken as a decimal number. None when not read, or no number.
    std::optional<qint64> integer(const QString &name) const;
    // For properties without a sign: WMI hands 2^31 and above out as negative numbers.
    std::optional<quint64> unsignedInteger(const QString &name) const;
    // Any number but 0 is true: VARIANT_TRUE is -1.
    std::optional<bool> flag(const QString &name) const;
    QStringList list(const QString &name) const;

private:
    QHash<QString, QVariant> m_values;
};

struct WmiQuery {
    QString text;           // WQL
    QStringList properties; // what is read of every object
    QString failure = QStringLiteral("Query for operating system name failed."); // written when it is refused
    QString scope = QStringLiteral("ROOT\\CIMV2");
};

enum class WmiAnswer {
    Complete,
    Failed,  // at some step; rows may have come before
    TooMany, // more objects than anybody reads: the rest was left
    Stopped, // the job was asked to stop
};

// Answers WMI questions, one at a time and always on the same thread. Implemented by platform::WmiSession.
class WmiSource
{
public:
    virtual ~WmiSource() = default;

    // Calls `take` for every object, in the order of the answer. Waits as long as WMI does.
    virtual WmiAnswer query(const WmiQuery &query, const std::function<void(const WmiRow &)> &take) = 0;
    // Writes the failure text of a query that could not even be put together.
    virtual void noteFailure(const WmiQuery &query, quint32 code) = 0;
};

} // namespace core
