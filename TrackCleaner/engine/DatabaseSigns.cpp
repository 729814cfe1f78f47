// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/engine/DatabaseSigns.h"

#include <algorithm>
#include <array>

namespace tracks
{

namespace
{

constexpr auto anyCase = Qt::CaseInsensitive;
constexpr qsizetype eseBaseLength = 3;

bool is(QStringView name, QStringView other)
{
    return name.compare(other, anyCase) == 0;
}

template <std::size_t Count>
bool endsWithAny(QStringView name, const std::array<QStringView, Count> &ends)
{
    return std::any_of(ends.begin(), ends.end(),
                       [name](QStringView end) { return name.endsWith(end, anyCase); });
}

} // namespace

DatabaseSigns::DatabaseSigns(QStringView folder)
    : m_systemHives(folder.endsWith(u"\\System32\\config", anyCase))
{
}

void DatabaseSigns::meet(QStringView name)
{
    if (is(name, u"CURRENT"))
        m_current = true;
    else if (name.startsWith(u"MANIFEST-", anyCase))
        m_manifest = true;
    else if (name.size() == eseBaseLength + 4 && name.endsWith(u".chk", anyCase))
        m_eseBases.append(name.first(eseBaseLength).toString());
    else if (name.size() > 5 && (name.endsWith(u".log1", anyCase) || name.endsWith(u".log2", anyCase)))
        m_hives.append(name.chopped(5).toString());
}

bool DatabaseSigns::isPartOfDatabase(QStringView name) const
{
    return isJournalAnywhere(name) || isPartOfLevelDb(name) || isPartOfEse(name) || isPartOfHive(name);
}

bool DatabaseSigns::isJournalAnywhere(QStringView name)
{
    return name.endsWith(u".log", anyCase) &&
           (name.startsWith(u"edb", anyCase) || name.startsWith(u"V01", anyCase));
}

bool DatabaseSigns::isPartOfLevelDb(QStringView name) const
{
    static constexpr std::array<QStringView, 3> ends{u".log", u".ldb", u".sst"};
    return m_current && m_manifest &&
           (endsWithAny(name, ends) || is(name, u"CURRENT") || is(name, u"LOCK") || is(name, u"LOG") ||
            is(name, u"LOG.old") || name.startsWith(u"MANIFEST-", anyCase));
}

bool DatabaseSigns::isPartOfEse(QStringView name) const
{
    static constexpr std::array<QStringView, 3> ownEnds{u".log", u".chk", u".jrs"};
    static constexpr std::array<QStringView, 2> databaseEnds{u".edb", u".jfm"};
    if (!m_eseBases.isEmpty() && endsWithAny(name, databaseEnds))
        return true;
    return std::any_of(m_eseBases.begin(), m_eseBases.end(), [name](const QString &base) {
        return name.startsWith(base, anyCase) && endsWithAny(name, ownEnds);
    });
}

bool DatabaseSigns::isPartOfHive(QStringView name) const
{
    static constexpr std::array<QStringView, 4> ends{u"", u".log", u".log1", u".log2"};
    if (m_systemHives && name.endsWith(u".log", anyCase))
        return true;
    return std::any_of(m_hives.begin(), m_hives.end(), [name](const QString &hive) {
        return name.startsWith(hive, anyCase) && std::any_of(ends.begin(), ends.end(), [&](QStringView end) {
                   return is(name.sliced(hive.size()), end);
               });
    });
}

} // namespace tracks
