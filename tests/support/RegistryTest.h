// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/TestPrefix.h"

#include <QObject>

#include <optional>

namespace tests
{

// A test program whose functions begin and end without any setting of the suite.
class RegistryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_registry.emplace(); }
    void cleanup() { m_registry.reset(); }

private:
    std::optional<RegistryGuard> m_registry;
};

} // namespace tests
