// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QString>

#include <functional>

class QAction;
class QPushButton;
class QScrollArea;
class QToolButton;
class QWidget;

// Creates the images, buttons and shortcuts of a page, one call each. Object names are plain ASCII.
namespace controls
{

// The embedded image of that name, such as "Export24"; on scaled screens Qt uses the one of twice the size.
// The same image is used in light and dark mode (resources/README.md). Empty without a name.
QIcon image(const char *name);

enum class Rank { Primary, Secondary };

// Texts and image of a button. The tool tip shows the shortcut in parentheses; the default tool tip is the
// text.
struct Button {
    const char *objectName = "";
    const char *image = ""; // "" for none
    QString text = {};
    QString tip = {};
    QKeySequence key = {};
};

// A text button with the usual height of a row. The primary rank is for the one main action of a page.
QPushButton *pushButton(QWidget *parent, const Button &button, Rank rank = Rank::Secondary);
// A flat button for headers and tool rows: only its image or, with `showText`, with text beside it. Without
// text, the text is used as accessible name and tool tip.
QToolButton *toolButton(QWidget *parent, const Button &button, bool showText = false);

// Shows `content`, taking ownership, on the page's background. The content gets the available width and
// scrolls vertically, to the control that has the focus; the area itself takes none.
QScrollArea *scrollArea(QWidget *content, QWidget *parent = nullptr);

// A shortcut that works while the focus is in `owner` or below. It appears in no menu; for one that does, see
// action().
QAction *shortcut(QWidget *owner, const QKeySequence &key, std::function<void()> pressed);
// An action of `owner` for context menus; its shortcut works while the focus is in `owner` or below.
QAction *action(QWidget *owner, const Button &button, std::function<void()> triggered);

} // namespace controls
