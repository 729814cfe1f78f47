// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Type-ahead search in views. Qt queries the text of one row after another on the interface thread: a million
// rows would freeze the window at each key press.
namespace typeahead
{

// Up to this number of rows a search takes a few dozen milliseconds.
inline constexpr int maxRows = 20'000;

} // namespace typeahead
