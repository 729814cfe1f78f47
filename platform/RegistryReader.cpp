// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/RegistryReader.h"

#include "platform/Handle.h"
#include "platform/Text.h"

#include <vector>

namespace platform
{

namespace
{

constexpr DWORD maxValueBytes = 1024 * 1024;
// Limits: 255 characters for a key name, 16,383 for a value name, plus the terminator.
constexpr DWORD maxKeyName = 256;
constexpr DWORD maxValueName = 16384;

RegKey open(core::RegistryView::Hive hive, const QString &path, core::RegistryView::Bits bits)
{
    RegKey key;
    const HKEY root = hive == core::RegistryView::Hive::CurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    const REGSAM view = bits == core::RegistryView::Bits::Is64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
    // A failed call leaves the handle null.
    RegOpenKeyExW(root, wide(path), 0, KEY_READ | view, key.put());
    return key;
}

// Collects the names that a registry function enumerates: next(index, buffer, length).
template <class Next>
QStringList names(DWORD maxLength, Next next)
{
    QStringList found;
    std::vector<wchar_t> buffer(maxLength);
    for (DWORD i = 0;; ++i) {
        DWORD length = maxLength;
        const LSTATUS result = next(i, buffer.data(), &length);
        if (result != ERROR_SUCCESS)
            return found;
        found << fromWide(buffer.data(), static_cast<qsizetype>(length));
    }
}

} // namespace

core::RegistryValue RegistryReader::value(Hive hive, const QString &path, const QString &name, Bits bits)
{
    const RegKey key = open(hive, path, bits);
    core::RegistryValue value;
    DWORD size = 0;
    if (!key || RegQueryValueExW(key.get(), wide(name), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS ||
        size > maxValueBytes)
        return value;
    value.bytes.resize(static_cast<qsizetype>(size));
    DWORD type = REG_NONE;
    const LSTATUS result = RegQueryValueExW(key.get(), wide(name), nullptr, &type,
                                            reinterpret_cast<BYTE *>(value.bytes.data()), &size);
    if (result != ERROR_SUCCESS)
        return {}; // it was changed or deleted meanwhile
    value.type = type;
    value.bytes.truncate(static_cast<qsizetype>(size));
    return value;
}

QStringList RegistryReader::subkeys(Hive hive, const QString &path, Bits bits)
{
    const RegKey key = open(hive, path, bits);
    if (!key)
        return {};
    return names(maxKeyName, [&key](DWORD index, wchar_t *name, DWORD *length) {
        return RegEnumKeyExW(key.get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

QStringList RegistryReader::valueNames(Hive hive, const QString &path, Bits bits)
{
    const RegKey key = open(hive, path, bits);
    if (!key)
        return {};
    return names(maxValueName, [&key](DWORD index, wchar_t *name, DWORD *length) {
        return RegEnumValueW(key.get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
}

} // namespace platform
