// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HotKey.h"

#include "platform/Text.h"

#include <QString>

#include <windows.h>

namespace platform
{

namespace
{

constexpr int probeId = 0xbfff; // the highest id available to a program

HWND handleOf(WId window)
{
    return reinterpret_cast<HWND>(window);
}

QString propertyOf(HotKey hotKey)
{
    return QStringLiteral("LarkspurHotKey %1 %2").arg(hotKey.modifiers).arg(hotKey.key);
}

} // namespace

HotKey hotKeyOf(QChar character, bool ctrl, bool shift, bool windows)
{
    const SHORT scanned = VkKeyScanW(character.toUpper().unicode());
    const unsigned code = scanned == -1 ? 0 : LOBYTE(scanned);
    return {(ctrl ? MOD_CONTROL : 0U) | (shift ? MOD_SHIFT : 0U) | (windows ? MOD_WIN : 0U),
            code == 0xff ? 0 : code};
}

quint32 registerHotKey(WId window, int id, HotKey hotKey)
{
    if (!RegisterHotKey(handleOf(window), id, hotKey.modifiers | MOD_NOREPEAT, hotKey.key))
        return GetLastError();
    SetPropW(handleOf(window), wide(propertyOf(hotKey)), handleOf(window));
    return 0;
}

void unregisterHotKey(WId window, int id, HotKey hotKey)
{
    UnregisterHotKey(handleOf(window), id);
    RemovePropW(handleOf(window), wide(propertyOf(hotKey)));
}

bool holdsHotKey(WId window, HotKey hotKey)
{
    return window && GetPropW(handleOf(window), wide(propertyOf(hotKey)));
}

bool hotKeyIsFree(HotKey hotKey)
{
    if (!RegisterHotKey(nullptr, probeId, hotKey.modifiers, hotKey.key))
        return false;
    UnregisterHotKey(nullptr, probeId);
    return true;
}

} // namespace platform
