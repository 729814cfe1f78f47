// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

// Where the main window opens, and what is remembered of that: app/WindowGeometry.h applied to a window.
namespace placement
{

// Before the window is shown.
void restore(QWidget &window);
// When it is shown for the first time: moves what hangs over the edge of its screen into the available area,
// where it fits. What is stored stays as it is.
void moveIntoView(QWidget &window);
// The geometry; of a maximised window the normal one, and that it is maximised.
void store(const QWidget &window);

} // namespace placement
