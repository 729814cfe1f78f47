// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace platform
{

// QString and Windows both use UTF-16, so conversions copy code units unchanged: file names with unpaired
// surrogates round-trip. The pointer returned by wide() is valid until `text` is changed.
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
