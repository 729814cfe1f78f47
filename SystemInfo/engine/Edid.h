// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

#include <optional>

namespace systeminfo
{

// A monitor's identification from its first 128 EDID bytes (VESA E-EDID 1.3 and 1.4).
struct MonitorIdentity {
    QString maker; // three letters, "DEL"
    QString name;  // "DELL U2720Q"
    QString serialNumber;
    QSize nativeSize;       // in pixels
    double refreshRate = 0; // Hz; 0: unknown
    QSize imageMillimetres; // of the visible area; empty for a projector
    int year = 0;           // of manufacture; 0: unknown

    bool operator==(const MonitorIdentity &) const = default;
};

// The bytes come from a device: nullopt if header or checksum is wrong, and implausible fields stay empty.
std::optional<MonitorIdentity> readEdid(const QByteArray &bytes);

} // namespace systeminfo
