// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Comparison.h"

#include <map>
#include <tuple>

namespace systeminfo
{

namespace
{

using Kind = Difference::Kind;

// The rows of one level, indexed by the key that finds their counterparts.
class Level
{
public:
    explicit Level(const std::vector<Row> &rows)
    {
        std::map<std::pair<QString, QString>, int> counts;
        for (const Row &row : rows) {
            const int count = counts[{row.name, row.label}]++;
            m_rows.emplace_back(Key{row.name, row.label, count}, &row);
            m_places.emplace(m_rows.back().first, &row);
        }
    }

    using Key = std::tuple<QString, QString, int>;
    const std::vector<std::pair<Key, const Row *>> &rows() const { return m_rows; }
    const Row *find(const Key &key) const
    {
        const auto found = m_places.find(key);
        return found == m_places.end() ? nullptr : found->second;
    }

private:
    std::vector<std::pair<Key, const Row *>> m_rows;
    std::map<Key, const Row *> m_places;
};

class Comparer
{
public:
    void compareRows(const std::vector<Row> &first, const std::vector<Row> &second, const QStringList &path)
    {
        const Level left(first);
        const Level right(second);
        for (const auto &[key, row] : left.rows())
            compare(row, right.find(key), path);
        for (const auto &[key, row] : right.rows()) {
            if (!left.find(key))
                compare(nullptr, row, path);
        }
    }

    std::vector<Difference> take() { return std::move(m_found); }

private:
    void compare(const Row *first, const Row *second, const QStringList &parent)
    {
        static const std::vector<Row> none;
        const Row &any = first ? *first : *second;
        QStringList path = parent;
        path << any.label;
        const QString before = first ? spokenValue(*first) : QString();
        const QString after = second ? spokenValue(*second) : QString();
        if (!before.isEmpty() || !after.isEmpty() || any.children.empty()) {
            const Kind kind = !first                                  ? Kind::OnlySecond
                              : !second                               ? Kind::OnlyFirst
                              : before == after                       ? Kind::Same
                              : isLeftOut(before) || isLeftOut(after) ? Kind::NotCompared
                                                                      : Kind::Changed;
            m_found.push_back({path, before, after, kind});
        }
        compareRows(first ? first->children : none, second ? second->children : none, path);
    }

    std::vector<Difference> m_found;
};

// A page as a row, so that pages are matched in the same way as rows.
std::vector<Row> asRows(const Report &report)
{
    std::vector<Row> rows;
    for (const Page &page : report.pages)
        rows.push_back({.name = page.name, .label = page.title, .children = page.sections});
    return rows;
}

} // namespace

std::vector<Difference> compareReports(const Report &first, const Report &second)
{
    Comparer comparer;
    comparer.compareRows(asRows(first), asRows(second), {});
    return comparer.take();
}

} // namespace systeminfo
