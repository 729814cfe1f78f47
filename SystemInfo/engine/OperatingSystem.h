// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

#include <optional>

namespace systeminfo
{

// SoftwareLicensingProduct: "Windows(R) Operating System, RETAIL channel" and the number of LicenseStatus.
QString activationChannel(const QString &description);
QString licenseText(qint64 status);
// The shell's property System.Volume.BitLockerProtection.
QString encryptionText(int state);
// Win32_DeviceGuard.VirtualizationBasedSecurityStatus
QString virtualizationSecurityText(qint64 status);

} // namespace systeminfo
