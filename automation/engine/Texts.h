// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>

namespace automation
{

// Translates texts for the user: states and reasons that the agent shows and logs.
inline QString tr(const char *text)
{
    return QCoreApplication::translate("automation", text);
}

} // namespace automation
