// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Row.h"

#include <optional>

namespace systeminfo
{

// From SoftwareLicensingProduct: the Description, such as "Windows(R) Operating System, RETAIL channel", and
// LicenseStatus.
QString activationChannel(const QString &description);
QString licenseText(qint64 status);
// The shell property System.Volume.BitLockerProtection.
QString encryptionText(int state);
// Win32_DeviceGuard.VirtualizationBasedSecurityStatus
QString virtualizationSecurityText(qint64 status);

} // namespace systeminfo
