// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"

#include <QString>

namespace automation
{

// What the combination normally does and would no longer do: a sentence, or empty if it is not known to be
// used. Based on Microsoft's list of Windows shortcuts, and on what almost every program uses.
QString knownUse(Modifier first, Modifier second, const QString &key);

} // namespace automation
