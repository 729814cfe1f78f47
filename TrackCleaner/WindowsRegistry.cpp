// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackCleaner/WindowsMachine.h"
#include "platform/Handle.h"
#include "platform/Text.h"
#include "settings/Settings.h"

#include <array>
#include <string>

namespace tracks
{

namespace
{

using platform::RegKey;
using platform::wide;

constexpr DWORD maxKeyName = 255;      // "Registry element size limits", Microsoft
constexpr DWORD maxValueName = 16'383; // likewise
constexpr int maxAttempts = 8;

RegKey openKey(const QString &key, REGSAM access)
{
    RegKey opened;
    RegOpenKeyExW(HKEY_CURRENT_USER, wide(key), 0, access, opened.put());
    return opened;
}

// A value may grow between the two calls and is then read again.
std::optional<RegistryValue> valueAt(const RegKey &key, DWORD index, std::wstring &name)
{
    QByteArray data;
    DWORD type = REG_NONE;
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        DWORD nameLength = maxValueName + 1;
        auto bytes = static_cast<DWORD>(data.size());
        const LSTATUS status =
            RegEnumValueW(key.get(), index, name.data(), &nameLength, nullptr, &type,
                          data.isEmpty() ? nullptr : reinterpret_cast<BYTE *>(data.data()), &bytes);
        const bool whole = status == ERROR_SUCCESS && bytes <= static_cast<DWORD>(data.size());
        if (!whole && status != ERROR_MORE_DATA && status != ERROR_SUCCESS)
            break;
        data.resize(static_cast<qsizetype>(bytes));
        if (whole)
            return RegistryValue{platform::fromWide(name.data(), nameLength), type, data};
    }
    return std::nullopt;
}

} // namespace

std::optional<RegistryKey> WindowsRegistry::read(const QString &key)
{
    const RegKey opened = openKey(key, KEY_READ);
    FILETIME written = {};
    if (!opened || RegQueryInfoKeyW(opened.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, nullptr, nullptr, nullptr, &written) != ERROR_SUCCESS)
        return std::nullopt;
    RegistryKey found;
    found.path = key;
    found.lastWriteTime = quint64{written.dwHighDateTime} << 32 | written.dwLowDateTime;
    std::wstring valueName(maxValueName + 1, L'\0');
    for (DWORD index = 0;; ++index) {
        std::optional<RegistryValue> value = valueAt(opened, index, valueName);
        if (!value)
            break;
        found.values.push_back(std::move(*value));
    }
    std::array<wchar_t, maxKeyName + 1> name;
    DWORD length = maxKeyName + 1;
    for (DWORD index = 0; RegEnumKeyExW(opened.get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                                        nullptr) == ERROR_SUCCESS;
         ++index) {
        found.subkeys.append(platform::fromWide(name.data(), length));
        length = maxKeyName + 1;
    }
    return found;
}

bool WindowsRegistry::deleteTree(const QString &key)
{
    return settings::deleteKeyWithSubkeys(key);
}

bool WindowsRegistry::deleteSubkey(const QString &parent, const QString &name)
{
    return settings::deleteSubkey(parent, name);
}

bool WindowsRegistry::createKey(const QString &key)
{
    return settings::createKey(key);
}

bool WindowsRegistry::setValue(const QString &key, const RegistryValue &value)
{
    const RegKey opened = openKey(key, KEY_SET_VALUE);
    return opened && RegSetValueExW(opened.get(), wide(value.name), 0, value.type,
                                    reinterpret_cast<const BYTE *>(value.data.constData()),
                                    static_cast<DWORD>(value.data.size())) == ERROR_SUCCESS;
}

bool WindowsRegistry::deleteValue(const QString &key, const QString &name)
{
    return settings::deleteValue(key, name);
}

} // namespace tracks
