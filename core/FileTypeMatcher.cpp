// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"

#include <QVarLengthArray>

namespace core
{

namespace
{

using Folded = QVarLengthArray<char16_t, 64>;

// Folds as QString::compare() does with Qt::CaseInsensitive: one code point by one. toCaseFolded() of a whole
// text also knows foldings that change its length, and would find things equal that a comparison does not.
void fold(QStringView text, Folded &out)
{
    out.clear();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        if (unit < 0x80) {
            out.append(unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit);
        } else if (QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            const char32_t point = QChar::toCaseFolded(QChar::surrogateToUcs4(unit, text[++i].unicode()));
            out.append(QChar::highSurrogate(point));
            out.append(QChar::lowSurrogate(point));
        } else {
            out.append(static_cast<char16_t>(QChar::toCaseFolded(char32_t{unit})));
        }
    }
}

QStringView viewOf(const Folded &folded)
{
    return QStringView(folded.constData(), folded.size());
}

} // namespace

FileTypeMatcher::FileTypeMatcher(const FileTypeTable &table)
{
    Folded folded;
    for (std::size_t category = 0; category < table.size(); ++category) {
        if (!table[category].enabled)
            continue;
        for (const QString &extension : table[category].extensions) {
            // A file's extension begins with a dot; one without a dot in its name has the extension "." and
            // belongs to no category, even where a damaged setting lists that.
            if (extension.size() < 2 || !extension.startsWith(u'.'))
                continue;
            fold(extension, folded);
            std::vector<int> &categories = m_byExtension[viewOf(folded).toString()];
            const int index = static_cast<int>(category);
            if (categories.empty() || categories.back() != index)
                categories.push_back(index);
            m_longest = qMax(m_longest, extension.size());
        }
    }
}

const std::vector<int> &FileTypeMatcher::match(QStringView fileName) const
{
    const qsizetype dot = fileName.indexOf(u'.');
    // Folding by code points keeps the length.
    if (dot < 0 || fileName.size() - dot > m_longest)
        return m_none;
    Folded folded;
    fold(fileName.sliced(dot), folded);
    const auto found = m_byExtension.find(viewOf(folded));
    return found == m_byExtension.end() ? m_none : found->second;
}

} // namespace core
