// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/TraceList.h"

#include <algorithm>
#include <compare>
#include <numeric>
#include <utility>

namespace tracks
{

namespace
{

class List
{
public:
    List(const ScanResult &found, Item item) : m_found(found), m_item(item), m_traces(found[item]) {}

    bool holds(std::size_t row, const QStringList &words) const
    {
        const QString texts = entryText(m_found, m_item, row) + u'\n' + placeText(m_found, m_item, row);
        return std::all_of(words.begin(), words.end(),
                           [&](const QString &word) { return texts.contains(word, Qt::CaseInsensitive); });
    }

    // Negative, 0 or positive, as QString::compare().
    int compare(std::size_t a, std::size_t b, ListKey key) const
    {
        switch (key) {
        case ListKey::Entry:
            return compareEntries(a, b);
        case ListKey::Place:
            return comparePlaces(a, b);
        case ListKey::Size:
            return compareNumbers(m_traces.sizeOf(a), m_traces.sizeOf(b));
        case ListKey::Time:
            return compareNumbers(timeOf(m_traces, a), timeOf(m_traces, b));
        case ListKey::Keep:
            return static_cast<int>(m_traces.keep(a)) - static_cast<int>(m_traces.keep(b));
        case ListKey::Found:
            break;
        }
        return compareNumbers(a, b);
    }

private:
    static int compareNumbers(quint64 a, quint64 b) { return a < b ? -1 : a > b ? 1 : 0; }

    // Compares file names without building strings: there may be a hundred thousand temporary files.
    int compareEntries(std::size_t a, std::size_t b) const
    {
        if (m_traces.isFile(a) && m_traces.isFile(b))
            return m_traces.files.at(a).name.compare(m_traces.files.at(b).name, Qt::CaseInsensitive);
        return entryText(m_found, m_item, a).compare(entryText(m_found, m_item, b), Qt::CaseInsensitive);
    }

    int comparePlaces(std::size_t a, std::size_t b) const
    {
        if (!m_traces.isFile(a) || !m_traces.isFile(b))
            return placeText(m_found, m_item, a).compare(placeText(m_found, m_item, b), Qt::CaseInsensitive);
        const quint32 left = m_traces.files.at(a).folder;
        const quint32 right = m_traces.files.at(b).folder;
        return left == right
                   ? 0
                   : m_traces.files.folder(left).compare(m_traces.files.folder(right), Qt::CaseInsensitive);
    }

    const ScanResult &m_found;
    Item m_item;
    const ItemTraces &m_traces;
};

struct Cancelled {
};

} // namespace

QString entryText(const ScanResult &found, Item item, std::size_t row)
{
    const ItemTraces &traces = found[item];
    if (traces.isFile(row))
        return traces.files.at(row).name.toString();
    const RegistryValue &value = traces.valueAt(row).value;
    const QString text = valueText(item, value);
    return text.isEmpty() ? value.name : text;
}

QString placeText(const ScanResult &found, Item item, std::size_t row)
{
    const ItemTraces &traces = found[item];
    return traces.isFile(row) ? traces.files.folder(traces.files.at(row).folder) : traces.pathOf(row);
}

quint64 timeOf(const ItemTraces &traces, std::size_t row)
{
    return traces.isFile(row) ? traces.files.at(row).lastWriteTime : traces.valueAt(row).lastWriteTime;
}

std::vector<quint32> arranged(const ScanResult &found, Item item, const ListOrder &order,
                              const core::CancelFlag &cancel)
{
    const List list(found, item);
    std::vector<quint32> rows(found[item].count());
    std::iota(rows.begin(), rows.end(), 0U);
    if (!order.words.isEmpty())
        std::erase_if(rows, [&](quint32 row) { return cancel.isSet() || !list.holds(row, order.words); });
    if (order.key == ListKey::Found && order.ascending)
        return rows;
    try {
        std::stable_sort(rows.begin(), rows.end(), [&](quint32 a, quint32 b) {
            if (cancel.isSet())
                throw Cancelled();
            return order.ascending ? list.compare(a, b, order.key) < 0 : list.compare(b, a, order.key) < 0;
        });
    } catch (const Cancelled &) {
        return {};
    }
    return rows;
}

} // namespace tracks
