// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>

namespace duplicates
{

// How many bytes the groups of a report could give back. Estimated from the report, and corrected for groups
// whose files were looked at: other names of a file, files behind a link and changed files free nothing.
class SpareBytes
{
public:
    void set(int group, quint64 estimated, quint64 known) { m_groups.insert(group, {estimated, known}); }
    void forget(int group) { m_groups.remove(group); }
    void clear() { m_groups.clear(); }

    quint64 of(int group, quint64 estimated) const
    {
        const auto found = m_groups.constFind(group);
        return found == m_groups.cend() ? estimated : found->known;
    }
    // `sum` is that of the estimates of all groups.
    quint64 corrected(quint64 sum) const
    {
        for (const Bytes &group : m_groups)
            sum += group.known - group.estimated; // modulo 2^64
        return sum;
    }

private:
    struct Bytes {
        quint64 estimated;
        quint64 known;
    };
    QHash<int, Bytes> m_groups;
};

} // namespace duplicates
