// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"

#include <QVarLengthArray>

namespace core
{

namespace
{

using Folded = QVarLengthArray<char16_t, 64>;

// Case-folds like QString::compare() with Qt::CaseInsensitive: code point by code point. toCaseFolded() may
// also change the length, and would make strings equal that compare() considers different.
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
            // An extension starts with a dot. A file name without a dot has the extension "." and belongs to
            // no category, even if a damaged setting lists it.
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
    // Folding by code point preserves the length.
    if (dot < 0 || fileName.size() - dot > m_longest)
        return m_none;
    Folded folded;
    fold(fileName.sliced(dot), folded);
    const auto found = m_byExtension.find(viewOf(folded));
    return found == m_byExtension.end() ? m_none : found->second;
}

} // namespace core
