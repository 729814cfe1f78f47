// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

// Windows' power schemes. Any thread.
namespace platform
{

struct PowerScheme {
    QString id; // "{8c5e7fda-e8bf-4a96-9a85-a6e23a8c635c}"
    QString name;
};

// In Windows' own order; empty if not available.
QList<PowerScheme> powerSchemes();
// Empty if not available.
QString activePowerScheme();
bool activatePowerScheme(const QString &id);

} // namespace platform
