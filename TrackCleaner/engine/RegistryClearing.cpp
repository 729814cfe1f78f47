// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/RegistryClearing.h"

#include "TrackCleaner/engine/OrderLists.h"

#include <QHash>
#include <QStringBuilder>

#include <algorithm>
#include <utility>

namespace tracks
{

namespace
{

// Key and value names are case-insensitive.
QString valueId(const QString &key, const QString &name)
{
    return QString(key % u'\n' % name).toLower();
}

// The values to remove, each with its row.
class Chosen
{
public:
    Chosen(Item item, const ClearPlan &plan) : m_traces((*plan.found)[item])
    {
        for (std::size_t row = m_traces.files.size(); row < m_traces.count(); ++row) {
            if (!isChosen(*plan.found, plan.leftOut, item, row))
                continue;
            const RegistryTrace &trace = m_traces.valueAt(row);
            m_rows.insert(valueId(trace.key, trace.value.name), row);
        }
    }

    // Compares the data too: a value that has changed since the scan is another entry.
    bool contains(const QString &key, const RegistryValue &value) const
    {
        const auto row = m_rows.constFind(valueId(key, value.name));
        return row != m_rows.cend() && m_traces.valueAt(*row).value.data == value.data &&
               m_traces.valueAt(*row).value.type == value.type;
    }

    bool containsAll(const std::vector<RegistryKey> &keys) const
    {
        return std::all_of(keys.begin(), keys.end(), [this](const RegistryKey &key) {
            return std::all_of(key.values.begin(), key.values.end(),
                               [&](const RegistryValue &value) { return contains(key.path, value); });
        });
    }

    std::size_t row(const QString &key, const RegistryValue &value) const
    {
        return m_rows.value(valueId(key, value.name));
    }

private:
    const ItemTraces &m_traces;
    QHash<QString, std::size_t> m_rows;
};

void recreate(const KeySource &source, TraceRegistry &registry)
{
    if (source.withSubkeys)
        registry.deleteTree(source.path());
    registry.deleteSubkey(source.parent, source.name);
    registry.createKey(source.path());
}

// Writes new values first, so that a failure leaves an entry twice rather than losing it.
void replaceValues(const RegistryKey &key, const std::vector<RegistryValue> &values, TraceRegistry &registry)
{
    for (const RegistryValue &value : values) {
        const bool stands = std::find(key.values.begin(), key.values.end(), value) != key.values.end();
        if (!stands && !registry.setValue(key.path, value))
            return;
    }
    for (const RegistryValue &old : key.values) {
        const bool stays = std::any_of(values.begin(), values.end(), [&](const RegistryValue &value) {
            return value.name.compare(old.name, Qt::CaseInsensitive) == 0;
        });
        if (!stays)
            registry.deleteValue(key.path, old.name);
    }
}

void removeSingly(const RegistryKey &key, const Chosen &chosen, TraceRegistry &registry)
{
    QStringList entries;
    QStringList orderLists;
    for (const RegistryValue &value : key.values) {
        if (chosen.contains(key.path, value))
            (isOrderList(value.name) ? orderLists : entries).append(value.name);
    }
    // The order list is removed too when no entries are left.
    const auto others = static_cast<qsizetype>(
        std::count_if(key.values.begin(), key.values.end(),
                      [](const RegistryValue &value) { return !isOrderList(value.name); }));
    if (entries.size() == others)
        entries += orderLists;
    if (!entries.isEmpty())
        replaceValues(key, withoutValues(key.values, entries), registry);
}

int count(const std::vector<RegistryKey> &keys, const Chosen &chosen, bool orderLists)
{
    int found = 0;
    for (const RegistryKey &key : keys) {
        for (const RegistryValue &value : key.values)
            found += chosen.contains(key.path, value) && (orderLists || !isOrderList(value.name)) ? 1 : 0;
    }
    return found;
}

} // namespace

void clearRegistry(Item item, const ClearPlan &plan, TraceRegistry &registry, ClearResult &result)
{
    const std::optional<KeySource> source = keySource(item);
    if (!source)
        return;
    const Chosen chosen(item, plan);
    const std::vector<RegistryKey> before = readKeys(registry, source->path(), source->withSubkeys);
    const bool whole = chosen.containsAll(before);
    if (whole) {
        recreate(*source, registry);
    } else {
        for (const RegistryKey &key : before)
            removeSingly(key, chosen, registry);
    }

    const std::vector<RegistryKey> after = readKeys(registry, source->path(), source->withSubkeys);
    for (const RegistryKey &key : after) {
        for (const RegistryValue &value : key.values) {
            // An order list that still serves other entries was not meant to be removed.
            if (!chosen.contains(key.path, value) || (!whole && isOrderList(value.name)))
                continue;
            const bool subkeys = whole && !source->withSubkeys && !key.subkeys.isEmpty();
            result.stayed.push_back(
                {item, chosen.row(key.path, value), subkeys ? Outcome::HasSubkeys : Outcome::Failed});
        }
    }
    result.deletedValues += count(before, chosen, whole) - count(after, chosen, whole);
}

} // namespace tracks
