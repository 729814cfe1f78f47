// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Values.h"

#include <QVariantMap>

#include <optional>

namespace settings
{

// Named sets of values (presets), each stored as one JSON text of a list. Damaged entries are skipped.
class NamedSets
{
public:
    explicit NamedSets(const TextList &list) : m_list(list) {}

    QStringList names() const; // in alphabetical order
    std::optional<QVariantMap> find(const QString &name) const;
    // Replaces a set of the same name. False if the list is full, or the registry could not be written.
    bool save(const QString &name, const QVariantMap &values) const;
    bool remove(const QString &name) const;

private:
    QStringList withoutSet(const QString &name) const;

    TextList m_list;
};

} // namespace settings
