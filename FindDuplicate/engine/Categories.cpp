// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/Categories.h"

#include "FindDuplicate/engine/FileRecord.h"

#include <QChar>
#include <QVarLengthArray>

#include <algorithm>

namespace duplicates
{

namespace
{

using Folded = QVarLengthArray<char16_t, 32>;

// Two folded texts are equal exactly when QString::compare() considers them equal ignoring case. That
// function folds code point by code point, whereas toCaseFolded() may lengthen a text ("ß" to "ss").
Folded folded(QStringView text)
{
    Folded result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.unicode() < 0x80) {
            const bool upper = c.unicode() >= u'A' && c.unicode() <= u'Z';
            result.append(static_cast<char16_t>(upper ? c.unicode() + (u'a' - u'A') : c.unicode()));
        } else if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            const char32_t fold = QChar::toCaseFolded(QChar::surrogateToUcs4(c, text[++i]));
            result.append(QChar::highSurrogate(fold));
            result.append(QChar::lowSurrogate(fold));
        } else {
            result.append(c.toCaseFolded().unicode());
        }
    }
    return result;
}

QStringView view(const Folded &text)
{
    return QStringView(text.constData(), text.size());
}

} // namespace

CategorySelection categorySelection(const core::FileTypeTable &named,
                                    const std::vector<CustomFileType> &custom)
{
    CategorySelection selection;
    selection.reserve(named.size() + custom.size());
    for (const core::FileTypeCategory &category : named)
        selection.push_back({category.name, category.extensions, true});
    for (const CustomFileType &type : custom)
        selection.push_back({type.name, type.extensions, true});
    return selection;
}

SuffixMatcher::SuffixMatcher(const CategorySelection &selection)
{
    for (std::size_t i = 0; i < selection.size(); ++i) {
        if (!selection[i].selected)
            continue;
        for (const QString &extension : selection[i].extensions) {
            if (extension.size() < 2 || !extension.startsWith(u'.'))
                continue;
            const QString suffix = view(folded(QStringView(extension).sliced(1))).toString();
            m_bySuffix.try_emplace(suffix, static_cast<int>(i)); // the first category that lists it wins
            m_longest = std::max(m_longest, suffix.size());
        }
    }
}

int SuffixMatcher::match(QStringView fileName) const
{
    const QStringView suffix = suffixOf(fileName);
    if (suffix.isEmpty() || suffix.size() > m_longest)
        return -1;
    const auto found = m_bySuffix.find(view(folded(suffix)));
    return found == m_bySuffix.end() ? -1 : found->second;
}

} // namespace duplicates
