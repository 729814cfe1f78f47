// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform
{

// QString and Windows share UTF-16, so both directions copy code units as they are: file names with unpaired
// surrogates come back as the same file names. The pointer of wide() lives as long as `text` is not changed.
inline const wchar_t *wide(const QString &text)
{
    static_assert(sizeof(wchar_t) == sizeof(QChar));
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

inline QString fromWide(const wchar_t *text, qsizetype length = -1)
{
    return QString::fromWCharArray(text, length);
}

} // namespace platform
