// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

#include <QVersionNumber>

// Product name and version.
namespace product
{

// Also the title of the main window, by which other executables of the suite find it: do not translate.
inline constexpr QLatin1StringView name{"Fernlight Larkspur"};

// Set by the build.
QVersionNumber version();

// The address of the release announcement. The built-in address is a placeholder; the value is for tests and
// for organisations that host the releases themselves.
inline constexpr settings::Text updateFeed{settings::keys::root, u"UpdateFeed",
                                           u"https://updates.fernlight.example/larkspur/latest.json"};

} // namespace product
