// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

// Restores and stores the main window's position: applies app/WindowGeometry.h to a window.
namespace placement
{

// Call before the window is shown.
void restore(QWidget &window);
// Call when it is first shown: moves a window that exceeds its screen's available area into it, if it fits.
// The stored values are not changed.
void moveIntoView(QWidget &window);
// Stores the geometry; for a maximised window the normal geometry, and that it is maximised.
void store(const QWidget &window);

} // namespace placement
