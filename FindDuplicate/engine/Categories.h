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

// A category that the user can take into a scan or leave out. Its index in the selection is, in decimal, the
// name of the settings value that stores its flag.
struct SelectableCategory {
    QString name;
    QStringList extensions; // each with a leading dot
    bool selected = true;
};

using CategorySelection = std::vector<SelectableCategory>;

// The named categories in their order, then the user's own; all selected. Whether the folder size analyzer
// counts a category (FileTypeCategory::enabled) plays no part here.
CategorySelection categorySelection(const core::FileTypeTable &named,
                                    const std::vector<CustomFileType> &custom);

// What a stored flag means: 1 is selected, an absent one too, any other value is not.
constexpr bool isSelectedByStoredFlag(std::optional<quint32> stored)
{
    return stored.value_or(1) == 1;
}

// Finds a file's category by one hash access, with the answer of going through the selected categories and
// the extensions of each in order. Here an extension is what follows the LAST dot, unlike
// core::FileTypeMatcher: an extension with two dots matches nothing.
class SuffixMatcher
{
public:
    explicit SuffixMatcher(const CategorySelection &selection);

    // The index of the first selected category that lists the name's extension, -1 when none does.
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
