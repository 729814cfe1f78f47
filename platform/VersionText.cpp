// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/VersionText.h"

#include "platform/Text.h"

#include <vector>
#include <windows.h>

namespace platform
{

QString versionText(const QString &file, QStringView name)
{
    const DWORD size = GetFileVersionInfoSizeW(wide(file), nullptr);
    std::vector<BYTE> block(size);
    if (size == 0 || !GetFileVersionInfoW(wide(file), 0, size, block.data()))
        return {};
    struct Language {
        WORD language;
        WORD codePage;
    };
    void *value = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation", &value, &length) ||
        length < sizeof(Language))
        return {};
    const Language language = *static_cast<const Language *>(value);
    const QString place = QStringLiteral("\\StringFileInfo\\%1%2\\%3")
                              .arg(language.language, 4, 16, QLatin1Char('0'))
                              .arg(language.codePage, 4, 16, QLatin1Char('0'))
                              .arg(name);
    if (!VerQueryValueW(block.data(), wide(place), &value, &length) || length == 0)
        return {};
    return fromWide(static_cast<const wchar_t *>(value), static_cast<qsizetype>(length))
        .section(QChar(0), 0, 0)
        .trimmed();
}

} // namespace platform
