// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/Keys.h"
#include "settings/Values.h"

#include <QVersionNumber>

// What the program says of itself.
namespace product
{

// The title of the main window as well, by which other executables of the suite find it: not translated.
inline constexpr QLatin1StringView name{"Fernlight Larkspur"};

// From the build.
QVersionNumber version();

// Where the newest release is announced. The address that is built in stands for one that is still to be set
// up; the value is there for tests and for those who serve the releases themselves.
inline constexpr settings::Text updateFeed{settings::keys::root, u"UpdateFeed",
                                           u"https://updates.fernlight.example/larkspur/latest.json"};

} // namespace product
