// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Makes the compiled-in images, ":/resources/images/", and the third-party notices, ":/documents/", known to
// Qt. They lie in a static library, where nothing else would pull them into the program.
void initResources();
