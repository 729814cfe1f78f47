// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/engine/ShortcutCommand.h"

#include <QString>

namespace automation
{

// What would be lost if a shortcut took this combination: a sentence, or empty where nothing is known. Taken
// from Microsoft's list of the keyboard shortcuts of Windows, and from what nearly every program uses.
QString knownUse(Modifier first, Modifier second, const QString &key);

} // namespace automation
