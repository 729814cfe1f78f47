// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RegistryView.h"

namespace platform
{

// The registry of this computer. Any thread. Values above 1 MB read as absent.
class RegistryReader : public core::RegistryView
{
public:
    core::RegistryValue value(Hive hive, const QString &path, const QString &name,
                              Bits bits = Bits::Is64) override;
    QStringList subkeys(Hive hive, const QString &path, Bits bits = Bits::Is64) override;
    QStringList valueNames(Hive hive, const QString &path, Bits bits = Bits::Is64) override;
};

} // namespace platform
