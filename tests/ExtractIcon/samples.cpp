// SPDX-License-Identifier: GPL-3.0-or-later
// A library needs a source; only its resources matter.
extern "C" int iconSamples()
{
    return 0;
}
