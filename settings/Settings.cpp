// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Settings.h"

#include "platform/Handle.h"
#include "platform/Text.h"
#include "settings/Keys.h"
#include "settings/Values.h"

#include <QDebug>
#include <QStringList>

#include <algorithm>
#include <array>
#include <string>

namespace settings
{

namespace
{

using platform::RegKey;
using platform::wide;

// Limit for a key name: 255 characters (registry element size limits of Windows).
constexpr DWORD maximumKeyName = 255;
constexpr int maximumAttempts = 8;
constexpr quint32 firstBuildOfWindows11 = 22000;

RegKey openKey(const QString &key, REGSAM access)
{
    RegKey opened;
    RegOpenKeyExW(HKEY_CURRENT_USER, wide(key), 0, access, opened.put());
    return opened;
}

bool writeValue(QAnyStringView key, QAnyStringView name, DWORD type, const void *data, qsizetype bytes)
{
    const QString keyPath = key.toString();
    const QString valueName = name.toString();
    RegKey created;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, wide(keyPath), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                        nullptr, created.put(), nullptr) != ERROR_SUCCESS)
        return false;
    if (RegSetValueExW(created.get(), wide(valueName), 0, type, static_cast<const BYTE *>(data),
                       static_cast<DWORD>(bytes)) != ERROR_SUCCESS)
        return false;
    qDebug() << "true";
    return true;
}

template <class Function>
Function ntdllFunction(const char *name)
{
    const HMODULE ntdll = GetModuleHandleW(L"ntdll");
    return ntdll ? reinterpret_cast<Function>(reinterpret_cast<void *>(GetProcAddress(ntdll, name)))
                 : nullptr;
}

// Deletes exactly the key behind the handle. Functions that take a name would look it up again and, for a
// link, act on its target.
bool deleteOpenedKey(const RegKey &key)
{
    using Delete = LONG(NTAPI *)(HANDLE);
    static const auto deleteKey = ntdllFunction<Delete>("NtDeleteKey");
    return deleteKey && deleteKey(key.get()) >= 0;
}

bool isLink(const RegKey &key)
{
    DWORD type = REG_NONE;
    return RegQueryValueExW(key.get(), L"SymbolicLinkValue", nullptr, &type, nullptr, nullptr) ==
               ERROR_SUCCESS &&
           type == REG_LINK;
}

// The option opens a link itself instead of its target. Windows limits the depth of keys to 512, and with it
// the recursion.
bool deleteTree(HKEY parent, const wchar_t *name)
{
    RegKey key;
    if (RegOpenKeyExW(parent, name, REG_OPTION_OPEN_LINK, KEY_READ | DELETE, key.put()) != ERROR_SUCCESS)
        return false;
    if (!isLink(key)) {
        qDebug() << "RegDeleteKeyEx Enumerate the keys";
        std::array<wchar_t, maximumKeyName + 1> child;
        DWORD length = maximumKeyName + 1;
        // Each deleted child moves the next one to index 0; a child that cannot be deleted would be
        // enumerated forever.
        while (RegEnumKeyExW(key.get(), 0, child.data(), &length, nullptr, nullptr, nullptr, nullptr) ==
               ERROR_SUCCESS) {
            qDebug() << "RegDeleteKeyEx alsoDeleteChildKey";
            if (!deleteTree(key.get(), child.data()))
                return false;
            length = maximumKeyName + 1;
        }
    }
    return deleteOpenedKey(key);
}

bool isDeletable(const QString &key)
{
    const QStringList components = key.split(u'\\');
    return components.size() >= 2 && !components.contains(QString()) && !key.contains(QChar::Null);
}

bool isSet(QAnyStringView key, QAnyStringView name)
{
    quint32 value = 0;
    readDword(key, name, value);
    return value != 0;
}

} // namespace

bool readDword(QAnyStringView key, QAnyStringView name, quint32 &value)
{
    const QString keyPath = key.toString();
    const QString valueName = name.toString();
    // The function writes into its buffer even if it fails, hence a local variable.
    DWORD stored = 0;
    DWORD bytes = sizeof stored;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, wide(keyPath), wide(valueName), RRF_RT_REG_DWORD,
                                        nullptr, &stored, &bytes);
    if (status != ERROR_SUCCESS || bytes != sizeof stored) {
        qDebug().noquote().nospace() << keyPath << " : " << valueName << ": Cannot read DWORD from registry.";
        return false;
    }
    value = stored;
    return true;
}

bool readString(QAnyStringView key, QAnyStringView name, QString &text)
{
    const QString valueName = name.toString();
    const RegKey opened = openKey(key.toString(), KEY_READ);
    text.clear();

    const auto query = [&](wchar_t *buffer, DWORD &bytes) {
        return RegGetValueW(opened.get(), nullptr, wide(valueName), RRF_RT_REG_SZ, nullptr, buffer, &bytes);
    };
    DWORD bytes = 0;
    LSTATUS status = opened ? query(nullptr, bytes) : ERROR_FILE_NOT_FOUND;
    if (status == ERROR_SUCCESS)
        status = ERROR_MORE_DATA;
    std::wstring buffer;
    // The text may grow between two calls; doubling the buffer ends the race soon.
    for (int attempt = 0; status == ERROR_MORE_DATA && attempt < maximumAttempts; ++attempt) {
        // A stored text may have an odd number of bytes, and no terminator. The last character stays NUL.
        const std::size_t wanted = bytes / sizeof(wchar_t) + 2;
        buffer.assign(std::max(wanted, 2 * buffer.size()), L'\0');
        bytes = static_cast<DWORD>((buffer.size() - 1) * sizeof(wchar_t));
        status = query(buffer.data(), bytes);
    }
    if (status != ERROR_SUCCESS) {
        qDebug() << "error";
        return false;
    }
    // Whole characters only: a trailing odd byte is dropped.
    buffer.resize(bytes / sizeof(wchar_t));
    text = platform::fromWide(buffer.c_str()); // up to the first NUL
    return true;
}

bool writeDword(QAnyStringView key, QAnyStringView name, quint32 value)
{
    return writeValue(key, name, REG_DWORD, &value, sizeof value);
}

bool writeString(QAnyStringView key, QAnyStringView name, QAnyStringView text)
{
    const QString stored = text.toString();
    return writeValue(key, name, REG_SZ, wide(stored), (stored.size() + 1) * qsizetype{sizeof(wchar_t)});
}

bool keyExists(QAnyStringView key)
{
    return bool(openKey(key.toString(), KEY_READ));
}

bool valueExists(QAnyStringView key, QAnyStringView name)
{
    const QString valueName = name.toString();
    const RegKey opened = openKey(key.toString(), KEY_READ);
    return opened && RegQueryValueExW(opened.get(), wide(valueName), nullptr, nullptr, nullptr, nullptr) ==
                         ERROR_SUCCESS;
}

bool deleteValue(QAnyStringView key, QAnyStringView name)
{
    const QString valueName = name.toString();
    const RegKey opened = openKey(key.toString(), KEY_SET_VALUE);
    return opened && RegDeleteValueW(opened.get(), wide(valueName)) == ERROR_SUCCESS;
}

bool deleteKeyWithSubkeys(QAnyStringView key)
{
    const QString keyPath = key.toString();
    return isDeletable(keyPath) && deleteTree(HKEY_CURRENT_USER, wide(keyPath));
}

bool deleteSubkey(QAnyStringView parent, QAnyStringView name)
{
    const QString subkey = name.toString();
    const RegKey opened = openKey(parent.toString(), KEY_READ);
    return opened && !subkey.isEmpty() && RegDeleteKeyW(opened.get(), wide(subkey)) == ERROR_SUCCESS;
}

bool createKey(QAnyStringView key)
{
    const QString keyPath = key.toString();
    RegKey created;
    return RegCreateKeyExW(HKEY_CURRENT_USER, wide(keyPath), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                           nullptr, created.put(), nullptr) == ERROR_SUCCESS;
}

qint32 dwordInRange(QAnyStringView key, QAnyStringView name, qint32 fallback, qint32 minimum, qint32 maximum)
{
    quint32 stored = 0;
    if (!readDword(key, name, stored))
        return fallback;
    const auto value = static_cast<qint32>(stored);
    return value >= minimum && value <= maximum ? value : fallback;
}

QString numbered(QStringView name, int index)
{
    return name.toString() + QString::number(index);
}

QStringList TextList::read() const
{
    quint32 count = static_cast<quint32>(maxItems);
    if (!countName.isEmpty() && !readDword(key, countName, count))
        count = 0;
    const int last = static_cast<int>(std::min(count, static_cast<quint32>(maxItems)));
    QStringList items;
    for (int index = 0; index < last; ++index) {
        QString item;
        if (readString(key, numbered(name, index), item))
            items.append(item);
    }
    return items;
}

bool TextList::write(const QStringList &items) const
{
    const int count = static_cast<int>(std::min<qsizetype>(items.size(), maxItems));
    bool written = true;
    for (int index = 0; index < count; ++index)
        written &= writeString(key, numbered(name, index), items.at(index));
    if (!countName.isEmpty())
        written &= writeDword(key, countName, static_cast<quint32>(count));
    for (int index = count;; ++index) {
        const QString leftover = numbered(name, index);
        if (deleteValue(key, leftover))
            continue;
        if (valueExists(key, leftover))
            written = false;
        else if (!countName.isEmpty() || index >= maxItems)
            return written;
    }
}

QString installationFolder()
{
    QString folder;
    readString(keys::root, u"Path", folder);
    return folder;
}

bool backgroundFeaturesEnabled()
{
    const std::array features{isSet(keys::autoDarkMode, u"Enabled"), isSet(keys::glasswick, u"Enabled"),
                              isSet(keys::root, u"ShowTrayIcon"), isSet(keys::root, u"StayAwakeActive"),
                              isSet(keys::hotKey, u"Enabled")};
    return std::find(features.begin(), features.end(), true) != features.end();
}

bool isAgentNeeded()
{
    return backgroundFeaturesEnabled() || isSet(keys::wallpaperChanger, u"Enabled");
}

bool isWindows11Version(quint32 major, quint32 build)
{
    return major > 10 || (major == 10 && build >= firstBuildOfWindows11);
}

bool isWindows11()
{
    using GetVersion = LONG(NTAPI *)(RTL_OSVERSIONINFOW *);
    static const auto getVersion = ntdllFunction<GetVersion>("RtlGetVersion");
    RTL_OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    return getVersion && getVersion(&version) >= 0 &&
           isWindows11Version(version.dwMajorVersion, version.dwBuildNumber);
}

} // namespace settings
