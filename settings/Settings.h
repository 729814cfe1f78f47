// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAnyStringView>
#include <QString>

// The settings store: registry values of the current user (HKEY_CURRENT_USER), without an object or a cache,
// so changes of other processes are seen at the next read and every write takes effect at once. Reading is
// "default first": the caller's variable holds the default and only changes on success (texts are cleared;
// see readString). A missing key, a missing value and a value of another type all count as absent. Any
// thread. Module headers declare their values with the types of settings/Values.h, which use these functions.
namespace settings
{

// REG_DWORD of exactly four bytes. On failure `value` is unchanged.
bool readDword(QAnyStringView key, QAnyStringView name, quint32 &value);

// REG_SZ, or REG_EXPAND_SZ with variables expanded. `text` is cleared first and stays empty on failure, so
// the caller has to set the default again. Ends at the first NUL; a stored text without a terminator is read
// as it is.
bool readString(QAnyStringView key, QAnyStringView name, QString &text);

// Creates the key if it is missing. Returns false if the registry cannot be written (a policy, no memory);
// shows nothing to the user.
bool writeDword(QAnyStringView key, QAnyStringView name, quint32 value);
bool writeString(QAnyStringView key, QAnyStringView name, QAnyStringView text);

// Whether the key exists and can be read.
bool keyExists(QAnyStringView key);
// A value of any type.
bool valueExists(QAnyStringView key, QAnyStringView name);
bool deleteValue(QAnyStringView key, QAnyStringView name);

// Deletes a key with everything below it; stops at the first child that cannot be deleted. A registry link is
// deleted itself, never its target. Rejects paths of fewer than two components (an empty one would be all
// settings of the user, "Software" those of all programs), with an empty component or a NUL.
bool deleteKeyWithSubkeys(QAnyStringView key);
// Deletes one key, which must have no subkeys of its own.
bool deleteSubkey(QAnyStringView parent, QAnyStringView name);
// Also true if the key exists already.
bool createKey(QAnyStringView key);

// A stored number as a signed value, for indexes, limits and numbers that may be negative; `fallback` if it
// is absent or outside minimum..maximum.
qint32 dwordInRange(QAnyStringView key, QAnyStringView name, qint32 fallback, qint32 minimum, qint32 maximum);

// The name of an element of a stored list: "command3".
QString numbered(QStringView name, int index);

// The value `Path` of the root key; empty before the first start.
QString installationFolder();

// True if any feature that needs the background agent is on: dark mode, taskbar, tray icon, stay awake, hot
// keys.
bool backgroundFeaturesEnabled();
// The same, including the wallpaper changer: while this is true, the agent must run.
bool isAgentNeeded();

// By the real version number, independent of the program's manifest: build 22000 or later.
bool isWindows11();
bool isWindows11Version(quint32 major, quint32 build);

} // namespace settings
