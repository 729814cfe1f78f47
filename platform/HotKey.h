// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QChar>
#include <qwindowdefs.h>

// Key combinations that Windows tells to one window, whatever has the focus. A window that holds some notes
// them where other processes can look, since Windows does not tell who holds what.
namespace platform
{

struct HotKey {
    unsigned modifiers = 0; // MOD_ flags of RegisterHotKey, without MOD_NOREPEAT
    unsigned key = 0;       // virtual key code

    bool operator==(const HotKey &) const = default;
};

// With the key that carries the character on the present keyboard, 0 when none does. Shift is pressed only
// where it is named.
HotKey hotKeyOf(QChar character, bool ctrl, bool shift, bool windows);

// Returns the error of Windows, 0 for none. The window's thread.
quint32 registerHotKey(WId window, int id, HotKey hotKey);
void unregisterHotKey(WId window, int id, HotKey hotKey);

// Whether that window, of any process, holds the combination by registerHotKey().
bool holdsHotKey(WId window, HotKey hotKey);

// Whether it could be registered now. It is held for a moment: not to be asked while another process may be
// registering the same.
bool hotKeyIsFree(HotKey hotKey);

} // namespace platform
