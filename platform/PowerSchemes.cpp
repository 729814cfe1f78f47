// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PowerSchemes.h"

#include "platform/Handle.h"
#include "platform/Text.h"

#include <QUuid>

#include <array>
#include <initguid.h>
#include <powrprof.h>

namespace platform
{

namespace
{

constexpr ULONG maxSchemes = 100;

QString nameOf(const GUID &scheme)
{
    std::array<wchar_t, 256> name{};
    DWORD size = sizeof(wchar_t) * (name.size() - 1);
    const DWORD result = PowerReadFriendlyName(nullptr, &scheme, nullptr, nullptr,
                                               reinterpret_cast<UCHAR *>(name.data()), &size);
    return result == ERROR_SUCCESS ? fromWide(name.data()) : QString();
}

} // namespace

QList<PowerScheme> powerSchemes()
{
    QList<PowerScheme> schemes;
    for (ULONG index = 0; index < maxSchemes; ++index) {
        GUID id = {};
        DWORD size = sizeof id;
        if (PowerEnumerate(nullptr, nullptr, nullptr, ACCESS_SCHEME, index, reinterpret_cast<UCHAR *>(&id),
                           &size) != ERROR_SUCCESS)
            break;
        schemes.append({QUuid(id).toString(), nameOf(id)});
    }
    return schemes;
}

QString activePowerScheme()
{
    LocalMem memory;
    GUID *id = nullptr;
    if (PowerGetActiveScheme(nullptr, &id) != ERROR_SUCCESS || !id)
        return {};
    memory.reset(id);
    return QUuid(*id).toString();
}

bool activatePowerScheme(const QString &id)
{
    const QUuid parsed(id);
    const GUID scheme = parsed;
    return !parsed.isNull() && PowerSetActiveScheme(nullptr, &scheme) == ERROR_SUCCESS;
}

} // namespace platform
