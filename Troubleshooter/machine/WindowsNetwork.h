// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/World.h"

namespace repair
{

class WindowsNetwork : public Network
{
public:
    std::optional<QList<Adapter>> adapters() override;
    Connectivity connectivity() override;
    Proxy proxy() override;
    Lookup lookUp(const QString &host, const core::CancelFlag &cancel) override;
    bool connects(const QString &host, quint16 port, const core::CancelFlag &cancel) override;
};

} // namespace repair
