// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QChar>
#include <qwindowdefs.h>

// Global hot keys. A window that holds hot keys publishes them where other processes can look, since Windows
// does not tell who holds which.
namespace platform
{

struct HotKey {
    unsigned modifiers = 0; // MOD_ flags of RegisterHotKey, without MOD_NOREPEAT
    unsigned key = 0;       // virtual key code

    bool operator==(const HotKey &) const = default;
};

// Uses the key that produces the character on the current keyboard layout; 0 if none does. Shift is included
// only if requested.
HotKey hotKeyOf(QChar character, bool ctrl, bool shift, bool windows);

// Returns the Windows error code, 0 on success. Must be called on the window's thread.
quint32 registerHotKey(WId window, int id, HotKey hotKey);
void unregisterHotKey(WId window, int id, HotKey hotKey);

// Whether that window, in any process, holds the combination through registerHotKey().
bool holdsHotKey(WId window, HotKey hotKey);

// Whether it could be registered now. Registers it briefly: do not call while another process may be
// registering it.
bool hotKeyIsFree(HotKey hotKey);

} // namespace platform
