// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Troubleshooter/engine/Repair.h"
#include "Troubleshooter/engine/World.h"

namespace repair
{

// The host that Windows uses for its own connectivity test.
inline constexpr QStringView testHost = u"www.msftconnecttest.com";

// Checks cable, address, name resolution, proxy and Internet access. Before resetting something that the user
// may have configured, it saves that to a file, and does not reset it if saving fails.
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
