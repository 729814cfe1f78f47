// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/TraceRegistry.h"
#include "TrackCleaner/engine/Traces.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace tracks
{

// The file format of the registry editor, version 5: UTF-16 with a byte order mark. Importing restores the
// values, here or by a double click in Explorer.

// All values of these keys, of any type.
QByteArray regFile(const std::vector<RegistryKey> &keys);

// All registry values found for these items, whether left out or not.
std::vector<RegistryKey> foundKeys(const ScanResult &found, const ItemFlags &items);

enum class RegFileFault {
    None,
    NotARegFile,
    Damaged,   // a line that is not part of the format, or truncated values
    OtherKeys, // a key that is no trace of the catalogue
    Deletions, // it would delete something
};

// The content of a .reg file; empty if anything is wrong with it. The input is untrusted.
struct RegFileContent {
    RegFileFault fault = RegFileFault::None;
    int line = 0; // line of the error, from 1
    std::vector<RegistryKey> keys;
};
RegFileContent parseRegFile(const QByteArray &bytes);

// Whether this key (below HKEY_CURRENT_USER) is in the catalogue, or below one that is cleared with its
// subkeys.
bool isTraceKey(const QString &key);

// Writes the values, replacing those of the same names. False if one could not be written.
bool putBack(const std::vector<RegistryKey> &keys, TraceRegistry &registry);

} // namespace tracks
