// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/machine/WindowsMachine.h"

#include "platform/Com.h"
#include "platform/KnownFolders.h"
#include "platform/Text.h"

#include <propsys.h>
#include <shlobj.h>

namespace systeminfo
{

using platform::ComPointer;
using platform::fromWide;

namespace
{

// The real version; the documented functions return the version that the program's manifest declares.
void readVersion(SystemFacts &facts)
{
    using Call = LONG(WINAPI *)(OSVERSIONINFOW *);
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    const auto call = reinterpret_cast<Call>(
        reinterpret_cast<void (*)()>(library ? GetProcAddress(library, "RtlGetVersion") : nullptr));
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    if (!call || call(&version) != 0)
        return;
    facts.major = version.dwMajorVersion;
    facts.minor = version.dwMinorVersion;
    facts.build = version.dwBuildNumber;
}

QString localeText(LCTYPE type)
{
    wchar_t text[256] = {};
    return GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text, 256) > 0 ? fromWide(text) : QString();
}

QString userLocale()
{
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    return GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH) > 0 ? fromWide(name) : QString();
}

// "W. Europe Standard Time (UTC+01:00)", with the current offset.
QString timeZone()
{
    TIME_ZONE_INFORMATION zone = {};
    const DWORD state = GetTimeZoneInformation(&zone);
    if (state == TIME_ZONE_ID_INVALID)
        return {};
    const bool summer = state == TIME_ZONE_ID_DAYLIGHT;
    const LONG minutes = -(zone.Bias + (summer ? zone.DaylightBias : zone.StandardBias));
    const QString offset = QStringLiteral("UTC%1%2:%3")
                               .arg(minutes < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                               .arg(qAbs(minutes) / 60, 2, 10, QLatin1Char('0'))
                               .arg(qAbs(minutes) % 60, 2, 10, QLatin1Char('0'));
    const QString name = fromWide(summer ? zone.DaylightName : zone.StandardName);
    return name.isEmpty() ? offset : QStringLiteral("%1 (%2)").arg(name, offset);
}

QString computerName()
{
    wchar_t name[256] = {};
    DWORD size = 256;
    return GetComputerNameExW(ComputerNameDnsHostname, name, &size) ? fromWide(name) : QString();
}

QString userName()
{
    wchar_t name[257] = {};
    DWORD size = 257;
    return GetUserNameW(name, &size) ? fromWide(name) : QString();
}

} // namespace

SystemFacts WindowsMachine::system()
{
    SystemFacts facts;
    readVersion(facts);
    SYSTEM_INFO info = {};
    GetNativeSystemInfo(&info);
    facts.is64Bit = info.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64 ||
                    info.wProcessorArchitecture == 12; // PROCESSOR_ARCHITECTURE_ARM64
    facts.computerName = computerName();
    facts.userName = userName();
    facts.country = localeText(LOCALE_SLOCALIZEDCOUNTRYNAME);
    facts.language = localeText(LOCALE_SLOCALIZEDLANGUAGENAME);
    facts.locale = userLocale();
    facts.timeZone = timeZone();
    facts.uptimeSeconds = GetTickCount64() / 1000;
    facts.windowsFolder = platform::knownFolder(platform::KnownFolder::Windows);
    facts.systemFolder = platform::knownFolder(platform::KnownFolder::System);
    facts.profileFolder = platform::knownFolder(platform::KnownFolder::Profile);
    facts.now = QDateTime::currentDateTime();
    return facts;
}

std::optional<int> WindowsMachine::encryptionState(const QString &root)
{
    PROPERTYKEY key = {};
    ComPointer<IShellItem2> item;
    INT state = 0;
    if (FAILED(PSGetPropertyKeyFromName(L"System.Volume.BitLockerProtection", &key)) ||
        FAILED(SHCreateItemFromParsingName(platform::wide(root), nullptr, IID_IShellItem2, item.putVoid())) ||
        FAILED(item->GetInt32(key, &state)))
        return {};
    return state;
}

} // namespace systeminfo
