// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/CustomFileType.h"
#include "core/FileTypes.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <unordered_map>
#include <vector>

namespace duplicates
{

// A category that can be selected for a scan. Its decimal index in the selection is the name of the settings
// value with its flag.
struct SelectableCategory {
    QString name;
    QStringList extensions; // each with a leading dot
    bool selected = true;
};

using CategorySelection = std::vector<SelectableCategory>;

// The named categories in their order, then the user's own; all selected. FileTypeCategory::enabled, used by
// the folder size analyzer, is ignored here.
CategorySelection categorySelection(const core::FileTypeTable &named,
                                    const std::vector<CustomFileType> &custom);

// A stored flag of 1 means selected, as does an absent one; any other value does not.
constexpr bool isSelectedByStoredFlag(std::optional<quint32> stored)
{
    return stored.value_or(1) == 1;
}

// Finds a file's category by a single hash lookup, with the same result as searching the extensions of the
// selected categories in order. Here an extension is the part after the LAST dot, unlike in
// core::FileTypeMatcher: an extension with two dots never matches.
class SuffixMatcher
{
public:
    explicit SuffixMatcher(const CategorySelection &selection);

    // The index of the first selected category that lists the name's extension; -1 if none does.
    int match(QStringView fileName) const;

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(QStringView text) const { return qHash(text); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(QStringView a, QStringView b) const { return a == b; }
    };

    std::unordered_map<QString, int, Hash, Equal> m_bySuffix; // without the dot, case folded
    qsizetype m_longest = 0;
};

} // namespace duplicates
