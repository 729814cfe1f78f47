// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include <optional>

namespace systeminfo
{

// What a monitor says of itself in its first 128 identification bytes (VESA E-EDID 1.3 and 1.4).
struct MonitorIdentity {
    QString maker; // three letters, "DEL"
    QString name;  // "DELL U2720Q"
    QString serialNumber;
    QSize nativeSize;       // in pixels
    double refreshRate = 0; // Hz; 0: not told
    QSize imageMillimetres; // of the picture; empty for a projector
    int year = 0;           // of making; 0: not told

    bool operator==(const MonitorIdentity &) const = default;
};

// The bytes come from a device: none when the header or the checksum is wrong, and fields that make no sense
// stay empty.
std::optional<MonitorIdentity> readEdid(const QByteArray &bytes);

} // namespace systeminfo
