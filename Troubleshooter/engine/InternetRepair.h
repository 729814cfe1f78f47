// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/Repair.h"
#include "Troubleshooter/engine/World.h"

namespace repair
{

// The host that Windows itself asks whether there is an Internet.
inline constexpr QStringView testHost = u"www.msftconnecttest.com";

// Cable, address, names, proxy, and the way out. What sets something back that a user may have set saves it
// to a file first, and is not done when that fails.
class InternetRepair : public Repair
{
public:
    InternetRepair(Network &network, Tools &tools) : m_network(network), m_tools(tools) {}

    Examination check(const core::CancelFlag &cancel) override;
    Outcome apply(const Step &step, const core::CancelFlag &cancel) override;

private:
    QString restorePath(const QString &name) const;

    Network &m_network;
    Tools &m_tools;
};

} // namespace repair
