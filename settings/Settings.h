// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAnyStringView>
#include <QString>

// The settings store: values of the current user in the registry (HKEY_CURRENT_USER), without an object and
// without a cache, so that what another process wrote is seen at the next read and every write is at once on
// its way to the disk. Reading is "default first": the caller's variable holds the default and is changed
// only on success (a text is cleared; see readString). A missing key, a missing value and a value of another
// type are the same: absent. Any thread. The module headers declare their values with the types of
// settings/Values.h, which stand on these.
namespace settings
{

// REG_DWORD of exactly four bytes. On failure `value` keeps what it held.
bool readDword(QAnyStringView key, QAnyStringView name, quint32 &value);

// REG_SZ, or REG_EXPAND_SZ with its variables expanded. `text` is cleared first and stays empty on failure,
// so a default has to be put back by the caller. Ends at the first NUL; a stored text without terminator is
// read as it is.
bool readString(QAnyStringView key, QAnyStringView name, QString &text);

// The key is created when it is missing. False when Windows refuses (a policy, no memory); nobody is told.
bool writeDword(QAnyStringView key, QAnyStringView name, quint32 value);
bool writeString(QAnyStringView key, QAnyStringView name, QAnyStringView text);

// Whether the key is there and may be read.
bool keyExists(QAnyStringView key);
// A value of any type.
bool valueExists(QAnyStringView key, QAnyStringView name);
bool deleteValue(QAnyStringView key, QAnyStringView name);

// Deletes a key with everything below it and stops at the first child that cannot be deleted. A registry link
// is deleted itself, and where it leads to is left alone. Refuses any path of fewer than two components (an
// empty one would be the whole of the user's settings, "Software" those of all programs), with an empty
// component or a NUL.
bool deleteKeyWithSubkeys(QAnyStringView key);
// Deletes one key, which must have no subkeys of its own.
bool deleteSubkey(QAnyStringView parent, QAnyStringView name);
// True also when the key is there already.
bool createKey(QAnyStringView key);

// A stored number read as signed, for indexes, limits and numbers that may be negative; `fallback` when it is
// absent or outside of minimum..maximum.
qint32 dwordInRange(QAnyStringView key, QAnyStringView name, qint32 fallback, qint32 minimum, qint32 maximum);

// The name of an element of a stored list: "command3".
QString numbered(QStringView name, int index);

// The value `Path` of the root key; empty before the first start.
QString installationFolder();

// True when any feature that needs the background agent is on: dark mode, taskbar, tray icon, stay awake, hot
// keys.
bool backgroundFeaturesEnabled();
// The same, or the wallpaper is to change: while any of it holds, the agent must run.
bool isAgentNeeded();

// The version that Windows reports, whatever the manifest of the program says: major 10 from build 22000 on.
bool isWindows11();
bool isWindows11Version(quint32 major, quint32 build);

} // namespace settings
