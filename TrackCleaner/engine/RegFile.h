// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"
#include "TrackCleaner/engine/Traces.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace tracks
{

// The file format of the registry editor, version 5: UTF-16 with a byte order mark. Importing it puts the
// values back, here and with a double click in Explorer.

// Every value of these keys, whatever its type.
QByteArray regFile(const std::vector<RegistryKey> &keys);

// All values of the registry that were found of these items, left out or not.
std::vector<RegistryKey> foundKeys(const ScanResult &found, const ItemFlags &items);

enum class RegFileFault {
    None,
    NotARegFile,
    Damaged,   // a line that the format does not know, or values that break off
    OtherKeys, // a key that is no trace of the catalogue
    Deletions, // it would remove something
};

// What a .reg file holds; nothing of it when anything is wrong with it. The bytes come from outside.
struct RegFileContent {
    RegFileFault fault = RegFileFault::None;
    int line = 0; // where the fault is, from 1
    std::vector<RegistryKey> keys;
};
RegFileContent parseRegFile(const QByteArray &bytes);

// Whether this key, below HKEY_CURRENT_USER, is one of the catalogue, or below one that is cleared with its
// subkeys.
bool isTraceKey(const QString &key);

// Puts the values in, over those of the same names. False when the registry did not take one.
bool putBack(const std::vector<RegistryKey> &keys, TraceRegistry &registry);

} // namespace tracks
