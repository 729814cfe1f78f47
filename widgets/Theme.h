// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>

class QPainter;
class QPushButton;
class QWidget;

// The suite's visual style in one place. Everything is derived from a palette while painting, so that
// switching between light and dark only needs a repaint. Lengths are in device-independent pixels.
namespace theme
{

// Spacing between and inside elements.
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
inline constexpr int buttonHeight = 36; // for buttons in headers and on start pages

struct Colors {
    QColor window;      // page background
    QColor card;        // a card in its normal state
    QColor cardHover;   // under the mouse
    QColor cardPressed; // held down
    QColor border;      // around cards and between rows
    QColor borderHover;
    QColor field;         // background of editable text
    QColor controlBorder; // around buttons and fields
    QColor
        indicatorBorder; // outline of check boxes and radio buttons, which must be recognisable by it alone
    QColor text;
    QColor textMuted;  // second lines and hints; still readable (contrast of at least 4.5)
    QColor accent;     // readable as text and as a line on a card
    QColor accentText; // text on an accent area
    QColor accentSoft; // the tint of a selected or chosen area
    QColor track;      // the empty part of a bar
    QColor good;
    QColor warning;
    QColor danger;
};

bool isDark(const QPalette &palette);
// Whether a Windows contrast theme is active: then all lines and texts have full strength in the user's own
// colours. Read by install(), and when the palette changes.
bool isHighContrast();
void setHighContrast(bool on); // for tests
Colors colors(const QPalette &palette);
Colors colors(const QWidget *widget);

// `amount` 0 gives `from`, 1 gives `to`.
QColor mix(const QColor &from, const QColor &to, double amount);
// Contrast of two opaque colours as WCAG defines it, 1 to 21.
double contrast(const QColor &first, const QColor &second);
// `wanted`, made lighter or darker until its contrast with `background` is at least `ratio`.
QColor readable(const QColor &wanted, const QColor &background, double ratio);

// Distinct, calm colours for the parts of a chart; any index >= 0, always the same colour per index.
inline constexpr int chartColorCount = 12;
QColor chartColor(int index, const QPalette &palette);
// The part of a chart for "everything else".
QColor chartRestColor(const QPalette &palette);

// Fonts derived from the application's font.
QFont headline(const QFont &base);     // the title of a page
QFont sectionTitle(const QFont &base); // the title of a card or a section
QFont caption(const QFont &base);      // second lines

enum class CardState { Rest, Hover, Pressed, Checked };

// Background, border and (with `focus`) the focus ring of a card that fills `rect`.
void paintCard(QPainter &painter, const QRectF &rect, const Colors &colors, CardState state = CardState::Rest,
               bool focus = false);
void paintFocusRing(QPainter &painter, const QRectF &rect, const Colors &colors, int radius = cardRadius);
// A bar with round ends, filled from the left (from the right in right-to-left layouts) by `share`, 0 to 1.
void paintBar(QPainter &painter, const QRectF &rect, double share, const QColor &fill, const QColor &track,
              Qt::LayoutDirection direction = Qt::LeftToRight);

// Selection colours that stand out where the system's are black or a grey similar to the rows: the dark
// palette of a Windows without an accent colour. Otherwise a palette with nothing set.
QPalette visibleSelection(const QPalette &system);
// Sets FlatStyle and that palette for the application, and keeps them up to date with the system's light or
// dark mode. Call once at start.
void install();

// Gives a button the accent colour and keeps it when the palette changes: for the one main action of a page.
void makePrimary(QPushButton *button);
bool isPrimary(const QWidget *widget);
// Draws a widget's texts in the muted colour, also after palette changes.
void makeMuted(QWidget *widget);

} // namespace theme
