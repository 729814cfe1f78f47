// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Registers the embedded images, ":/resources/images/", and the third-party notices, ":/documents/". They are
// in a static library, from which nothing else would link them.
void initResources();
