// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>

class QPainter;
class QPushButton;
class QWidget;

// The suite's look in one place. Everything is derived from a palette at the moment of painting, so that a
// switch between light and dark needs no more than a repaint. Lengths are in device-independent pixels.
namespace theme
{

// Distances between and inside things.
inline constexpr int spaceTight = 4;
inline constexpr int spaceSnug = 8;
inline constexpr int space = 12;
inline constexpr int spaceWide = 16;
inline constexpr int spaceSection = 24; // between sections of a page
inline constexpr int pageMargin = 24;   // around a page

inline constexpr int cardRadius = 8;
inline constexpr int controlRadius = 4;
inline constexpr int barHeight = 6; // share and progress bars
inline constexpr int rowHeight = 28;
inline constexpr int buttonHeight = 36; // of the buttons in headers and start pages

struct Colors {
    QColor window;      // behind the cards
    QColor card;        // a card at rest
    QColor cardHover;   // under the mouse
    QColor cardPressed; // held down
    QColor border;      // around cards and between rows
    QColor borderHover;
    QColor field;           // behind text that can be edited
    QColor controlBorder;   // around buttons and fields
    QColor indicatorBorder; // around what can be ticked: its outline alone says that it is there
    QColor text;
    QColor textMuted;  // second lines, hints; still readable (contrast at least 4.5)
    QColor accent;     // readable as text and as a line on a card
    QColor accentText; // on an accent area
    QColor accentSoft; // the tint of a selected or chosen area
    QColor track;      // the empty part of a bar
    QColor good;
    QColor warning;
    QColor danger;
};

bool isDark(const QPalette &palette);
// The contrast themes of Windows: every line and text at full strength, in the user's own colours. Read by
// install(), and again when the palette changes.
bool isHighContrast();
void setHighContrast(bool on); // for tests
Colors colors(const QPalette &palette);
Colors colors(const QWidget *widget);

// `amount` of 0 gives `from`, of 1 gives `to`.
QColor mix(const QColor &from, const QColor &to, double amount);
// Contrast of two opaque colours as WCAG defines it, 1 to 21.
double contrast(const QColor &first, const QColor &second);
// `wanted`, made lighter or darker until its contrast to `background` is at least `ratio`.
QColor readable(const QColor &wanted, const QColor &background, double ratio);

// Distinct, calm colours for the parts of a picture; any index >= 0, the same for the same index in every
// picture.
inline constexpr int chartColorCount = 12;
QColor chartColor(int index, const QPalette &palette);
// The part of a picture that stands for "everything else".
QColor chartRestColor(const QPalette &palette);

// Fonts relative to the application's font.
QFont headline(const QFont &base);     // the title of a page
QFont sectionTitle(const QFont &base); // the title of a card or a section
QFont caption(const QFont &base);      // second lines

enum class CardState { Rest, Hover, Pressed, Checked };

// Background, border and (with `focus`) the focus ring of a card that fills `rect`.
void paintCard(QPainter &painter, const QRectF &rect, const Colors &colors, CardState state = CardState::Rest,
               bool focus = false);
void paintFocusRing(QPainter &painter, const QRectF &rect, const Colors &colors, int radius = cardRadius);
// A bar with round ends, filled from the left (from the right in a right-to-left layout) by `share`, 0 to 1.
void paintBar(QPainter &painter, const QRectF &rect, double share, const QColor &fill, const QColor &track,
              Qt::LayoutDirection direction = Qt::LeftToRight);

// The colours of a selection that stands out, where that of `system` is black or a grey among the rows around
// it: the dark palette of a Windows without an accent colour. Else a palette with nothing set.
QPalette visibleSelection(const QPalette &system);
// Gives the application FlatStyle and that selection, also when the system turns dark or light. Call it once
// at the start.
void install();

// Gives a button the accent colour, and keeps it through palette changes: the one main action of a page.
void makePrimary(QPushButton *button);
bool isPrimary(const QWidget *widget);
// Draws a widget's texts in the muted colour, and keeps it so through palette changes.
void makeMuted(QWidget *widget);

} // namespace theme
