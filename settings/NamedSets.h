// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

#include <QVariantMap>

#include <optional>

namespace settings
{

// Sets of values that the user gave a name, each kept as one text (JSON) of a list. What is damaged is passed
// over.
class NamedSets
{
public:
    explicit NamedSets(const TextList &list) : m_list(list) {}

    QStringList names() const; // in alphabetical order
    std::optional<QVariantMap> find(const QString &name) const;
    // Replaces a set of that name. False when the list is full, or Windows refused.
    bool save(const QString &name, const QVariantMap &values) const;
    bool remove(const QString &name) const;

private:
    QStringList withoutSet(const QString &name) const;

    TextList m_list;
};

} // namespace settings
