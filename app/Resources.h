// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Makes the compiled-in images known to Qt, under ":/resources/images/". They lie in a static library, where
// nothing else would pull them into the program.
void initResources();
