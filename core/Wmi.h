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

// One object of a WMI result: the requested properties that could be read, by name. A value is a bool, a
// qint32 (signed and unsigned 32-bit integers), a double, a QString (also for 64-bit integers, which WMI
// returns as text) or a QStringList.
class WmiRow
{
public:
    WmiRow() = default;
    WmiRow(std::initializer_list<std::pair<QString, QVariant>> values);

    void set(const QString &name, const QVariant &value) { m_values.insert(name, value); }
    bool has(const QString &name) const { return m_values.contains(name); }

    // Empty if it was not read; numbers in decimal.
    QString text(const QString &name) const;
    // Numbers as returned; a text is parsed as decimal. nullopt if not read, or not a number.
    std::optional<qint64> integer(const QString &name) const;
    // For unsigned properties: WMI returns values from 2^31 on as negative numbers.
    std::optional<quint64> unsignedInteger(const QString &name) const;
    // Any number but 0 is true: VARIANT_TRUE is -1.
    std::optional<bool> flag(const QString &name) const;
    QStringList list(const QString &name) const;

private:
    QHash<QString, QVariant> m_values;
};

struct WmiQuery {
    QString text;           // WQL
    QStringList properties; // properties to read from every object
    QString failure =
        QStringLiteral("Query for operating system name failed."); // diagnostic text if the query is rejected
    QString scope = QStringLiteral("ROOT\\CIMV2");
};

enum class WmiAnswer {
    Complete,
    Failed,  // at some step; rows may have been delivered
    TooMany, // the result exceeded the limit and was truncated
    Stopped, // cancelled
};

// Runs WMI queries, one at a time, always on the same thread. Implemented by platform::WmiSession.
class WmiSource
{
public:
    virtual ~WmiSource() = default;

    // Calls `take` for every object, in result order. Blocks as long as WMI does.
    virtual WmiAnswer query(const WmiQuery &query, const std::function<void(const WmiRow &)> &take) = 0;
    // Writes the diagnostic text of a query that could not even be built.
    virtual void noteFailure(const WmiQuery &query, quint32 code) = 0;
};

} // namespace core
