// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Views look for the row whose text begins with what is typed. Qt asks the model for the text of one row
// after the other, on the interface thread: a million of them would freeze the window at every key.
namespace typeahead
{

// Up to this many rows a search ends within a few dozen milliseconds.
inline constexpr int maxRows = 20'000;

} // namespace typeahead
