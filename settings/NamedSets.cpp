// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/NamedSets.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace settings
{

namespace
{

const QString nameOfSet = QStringLiteral("name");

QJsonObject parsed(const QString &stored)
{
    return QJsonDocument::fromJson(stored.toUtf8()).object();
}

} // namespace

QStringList NamedSets::names() const
{
    QStringList all;
    for (const QString &stored : m_list.read())
        all.append(parsed(stored).value(nameOfSet).toString());
    all.removeAll(QString());
    all.sort(Qt::CaseInsensitive);
    return all;
}

std::optional<QVariantMap> NamedSets::find(const QString &name) const
{
    for (const QString &stored : m_list.read()) {
        const QJsonObject set = parsed(stored);
        if (!name.isEmpty() && set.value(nameOfSet) == name)
            return set.toVariantMap();
    }
    return std::nullopt;
}

QStringList NamedSets::withoutSet(const QString &name) const
{
    QStringList all = m_list.read();
    all.removeIf([&name](const QString &stored) {
        const QString held = parsed(stored).value(nameOfSet).toString();
        return held.isEmpty() || held == name;
    });
    return all;
}

bool NamedSets::save(const QString &name, const QVariantMap &values) const
{
    QStringList all = withoutSet(name);
    if (name.isEmpty() || all.size() >= m_list.maxItems)
        return false;
    QJsonObject set = QJsonObject::fromVariantMap(values);
    set.insert(nameOfSet, name);
    all.append(QString::fromUtf8(QJsonDocument(set).toJson(QJsonDocument::Compact)));
    return m_list.write(all);
}

bool NamedSets::remove(const QString &name) const
{
    return m_list.write(withoutSet(name));
}

} // namespace settings
