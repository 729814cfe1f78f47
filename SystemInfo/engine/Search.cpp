// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/Search.h"

#include <algorithm>

namespace systeminfo
{

namespace
{

class Finder
{
public:
    Finder(QStringList words, std::size_t maxHits) : m_words(std::move(words)), m_maxHits(maxHits) {}

    void visit(const std::vector<Row> &rows, Hit &place)
    {
        for (std::size_t i = 0; i < rows.size() && m_hits.size() < m_maxHits; ++i) {
            place.row.push_back(static_cast<int>(i));
            place.path.append(rows[i].label);
            place.value = rows[i].value.text;
            if (matches(place))
                m_hits.push_back(place);
            visit(rows[i].children, place);
            place.path.removeLast();
            place.row.pop_back();
        }
    }

    std::vector<Hit> take() { return std::move(m_hits); }

private:
    // At least one word must occur in the row itself: a match in the section title must not list all of its
    // rows.
    bool matches(const Hit &hit) const
    {
        const QString own = hit.path.last() + QLatin1Char(' ') + hit.value;
        const QString all = hit.path.join(QLatin1Char(' ')) + QLatin1Char(' ') + hit.value;
        const auto in = [](const QString &text) {
            return [&text](const QString &word) { return text.contains(word, Qt::CaseInsensitive); };
        };
        return std::ranges::any_of(m_words, in(own)) && std::ranges::all_of(m_words, in(all));
    }

    QStringList m_words;
    std::size_t m_maxHits;
    std::vector<Hit> m_hits;
};

} // namespace

std::vector<Hit> findRows(const std::vector<Page> &pages, const QString &text, std::size_t maxHits)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return {};
    Finder finder(words, maxHits);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        Hit place{.page = i, .path = {pages[i].title}};
        finder.visit(pages[i].sections, place);
    }
    return finder.take();
}

} // namespace systeminfo
